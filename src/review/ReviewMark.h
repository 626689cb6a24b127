#pragma once

#include "clientdb/store/FormMarks.h"
#include "frame/Session.h"

#include <span>
#include <string>

namespace quillmere::review {

/// A mark in words: the day on which it was set, or that the form has been changed since. Empty if there is none.
std::string MarkInWords(const std::map<FormMark, MarkOfForm>& marks, FormMark mark);

/// Marks the forms of an employer's employees as reviewed today, as they are stored; takes the marks away if all of
/// them have one that holds. The status bar says which. Throws StoreError.
void ToggleReviewed(Session& session, const std::string& employer, std::span<const std::string> employees);
/// The same for the open employee, whose page is stored first.
void ToggleReviewedOfOpen(Session& session);

} // namespace quillmere::review
