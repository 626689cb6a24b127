#pragma once

#include "frame/LateLibrary.h"

#include <postgresql/libpq-fe.h>

/// What is used of the library that talks with a server.
namespace quillmere {

const LateLibrary& Libpq();

template<TextParameter Name, class Function>
using LibpqFunction = LateFunction<Libpq, Name, Function>;

// clang-format off
inline constexpr LibpqFunction<"PQclear", decltype(::PQclear)> PQclear;
inline constexpr LibpqFunction<"PQcmdStatus", decltype(::PQcmdStatus)> PQcmdStatus;
inline constexpr LibpqFunction<"PQcmdTuples", decltype(::PQcmdTuples)> PQcmdTuples;
inline constexpr LibpqFunction<"PQconnectdbParams", decltype(::PQconnectdbParams)> PQconnectdbParams;
inline constexpr LibpqFunction<"PQconsumeInput", decltype(::PQconsumeInput)> PQconsumeInput;
inline constexpr LibpqFunction<"PQenterPipelineMode", decltype(::PQenterPipelineMode)> PQenterPipelineMode;
inline constexpr LibpqFunction<"PQerrorMessage", decltype(::PQerrorMessage)> PQerrorMessage;
inline constexpr LibpqFunction<"PQfinish", decltype(::PQfinish)> PQfinish;
inline constexpr LibpqFunction<"PQfname", decltype(::PQfname)> PQfname;
inline constexpr LibpqFunction<"PQftype", decltype(::PQftype)> PQftype;
inline constexpr LibpqFunction<"PQgetResult", decltype(::PQgetResult)> PQgetResult;
inline constexpr LibpqFunction<"PQgetisnull", decltype(::PQgetisnull)> PQgetisnull;
inline constexpr LibpqFunction<"PQgetlength", decltype(::PQgetlength)> PQgetlength;
inline constexpr LibpqFunction<"PQgetvalue", decltype(::PQgetvalue)> PQgetvalue;
inline constexpr LibpqFunction<"PQlibVersion", decltype(::PQlibVersion)> PQlibVersion;
inline constexpr LibpqFunction<"PQnfields", decltype(::PQnfields)> PQnfields;
inline constexpr LibpqFunction<"PQntuples", decltype(::PQntuples)> PQntuples;
inline constexpr LibpqFunction<"PQpipelineSync", decltype(::PQpipelineSync)> PQpipelineSync;
inline constexpr LibpqFunction<"PQresultErrorField", decltype(::PQresultErrorField)> PQresultErrorField;
inline constexpr LibpqFunction<"PQresultErrorMessage", decltype(::PQresultErrorMessage)> PQresultErrorMessage;
inline constexpr LibpqFunction<"PQresultStatus", decltype(::PQresultStatus)> PQresultStatus;
inline constexpr LibpqFunction<"PQsendPrepare", decltype(::PQsendPrepare)> PQsendPrepare;
inline constexpr LibpqFunction<"PQsendQueryPrepared", decltype(::PQsendQueryPrepared)> PQsendQueryPrepared;
inline constexpr LibpqFunction<"PQstatus", decltype(::PQstatus)> PQstatus;
// clang-format on

} // namespace quillmere
