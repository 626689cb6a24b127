#pragma once

#include "frame/LateLibrary.h"

#include <cups/cups.h>

/// What is used of the spooler's library.
namespace quillmere {

const LateLibrary& Cups();

template<TextParameter Name, class Function>
using CupsFunction = LateFunction<Cups, Name, Function>;

// clang-format off
inline constexpr CupsFunction<"cupsAddOption", decltype(::cupsAddOption)> cupsAddOption;
inline constexpr CupsFunction<"cupsCancelJob2", decltype(::cupsCancelJob2)> cupsCancelJob2;
inline constexpr CupsFunction<"cupsCopyDestInfo", decltype(::cupsCopyDestInfo)> cupsCopyDestInfo;
inline constexpr CupsFunction<"cupsCreateDestJob", decltype(::cupsCreateDestJob)> cupsCreateDestJob;
inline constexpr CupsFunction<"cupsDoRequest", decltype(::cupsDoRequest)> cupsDoRequest;
inline constexpr CupsFunction<"cupsEncryption", decltype(::cupsEncryption)> cupsEncryption;
inline constexpr CupsFunction<"cupsFinishDestDocument", decltype(::cupsFinishDestDocument)> cupsFinishDestDocument;
inline constexpr CupsFunction<"cupsFreeDestInfo", decltype(::cupsFreeDestInfo)> cupsFreeDestInfo;
inline constexpr CupsFunction<"cupsFreeDests", decltype(::cupsFreeDests)> cupsFreeDests;
inline constexpr CupsFunction<"cupsFreeOptions", decltype(::cupsFreeOptions)> cupsFreeOptions;
inline constexpr CupsFunction<"cupsGetDefault2", decltype(::cupsGetDefault2)> cupsGetDefault2;
inline constexpr CupsFunction<"cupsGetDestMediaByName", decltype(::cupsGetDestMediaByName)> cupsGetDestMediaByName;
inline constexpr CupsFunction<"cupsGetDests2", decltype(::cupsGetDests2)> cupsGetDests2;
inline constexpr CupsFunction<"cupsGetOption", decltype(::cupsGetOption)> cupsGetOption;
inline constexpr CupsFunction<"cupsLastError", decltype(::cupsLastError)> cupsLastError;
inline constexpr CupsFunction<"cupsServer", decltype(::cupsServer)> cupsServer;
inline constexpr CupsFunction<"cupsSetPasswordCB2", decltype(::cupsSetPasswordCB2)> cupsSetPasswordCB2;
inline constexpr CupsFunction<"cupsStartDestDocument", decltype(::cupsStartDestDocument)> cupsStartDestDocument;
inline constexpr CupsFunction<"cupsUser", decltype(::cupsUser)> cupsUser;
inline constexpr CupsFunction<"cupsUserAgent", decltype(::cupsUserAgent)> cupsUserAgent;
inline constexpr CupsFunction<"cupsWriteRequestData", decltype(::cupsWriteRequestData)> cupsWriteRequestData;
inline constexpr CupsFunction<"httpAssembleURI", decltype(::httpAssembleURI)> httpAssembleURI;
inline constexpr CupsFunction<"httpClose", decltype(::httpClose)> httpClose;
inline constexpr CupsFunction<"httpConnect2", decltype(::httpConnect2)> httpConnect2;
inline constexpr CupsFunction<"httpSetTimeout", decltype(::httpSetTimeout)> httpSetTimeout;
inline constexpr CupsFunction<"ippAddBoolean", decltype(::ippAddBoolean)> ippAddBoolean;
inline constexpr CupsFunction<"ippAddInteger", decltype(::ippAddInteger)> ippAddInteger;
inline constexpr CupsFunction<"ippAddString", decltype(::ippAddString)> ippAddString;
inline constexpr CupsFunction<"ippAddStrings", decltype(::ippAddStrings)> ippAddStrings;
inline constexpr CupsFunction<"ippDelete", decltype(::ippDelete)> ippDelete;
inline constexpr CupsFunction<"ippFirstAttribute", decltype(::ippFirstAttribute)> ippFirstAttribute;
inline constexpr CupsFunction<"ippGetGroupTag", decltype(::ippGetGroupTag)> ippGetGroupTag;
inline constexpr CupsFunction<"ippGetInteger", decltype(::ippGetInteger)> ippGetInteger;
inline constexpr CupsFunction<"ippGetName", decltype(::ippGetName)> ippGetName;
inline constexpr CupsFunction<"ippGetStatusCode", decltype(::ippGetStatusCode)> ippGetStatusCode;
inline constexpr CupsFunction<"ippGetString", decltype(::ippGetString)> ippGetString;
inline constexpr CupsFunction<"ippNewRequest", decltype(::ippNewRequest)> ippNewRequest;
inline constexpr CupsFunction<"ippNextAttribute", decltype(::ippNextAttribute)> ippNextAttribute;
inline constexpr CupsFunction<"ippPort", decltype(::ippPort)> ippPort;
// clang-format on

} // namespace quillmere
