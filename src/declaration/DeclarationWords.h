#pragma once

#include <string>
#include <string_view>

/// The words of the form P11D(b) on the screen. What names a day or a year of the return is put together with the
/// edition's own words.
namespace quillmere::words {

inline constexpr std::string_view Class1AReturn = "Return of Class 1A National Insurance contributions due";
inline constexpr std::string_view ExpensesReturn = "Return of expenses and benefits - Employer declaration";
/// "Year ended …".
std::string YearEnded();

inline constexpr std::string_view TotalBenefits = "Enter the total benefits liable to Class 1A NICs from forms P11D.";
inline constexpr std::string_view AdjustFigures =
    "If you need to adjust the figures entered in box A, do not complete box C below, tick this box and complete "
    "section 4 overleaf.";
inline constexpr std::string_view MultiplyByRate = "Multiply by Class 1A NICs rate";
inline constexpr std::string_view NICsPayable = "Class 1A NICs payable";

std::string NoBenefits();
std::string FormsEnclosed();
std::string FormsSent();
inline constexpr std::string_view OfficeOn = "HM Revenue & Customs office on";

/// Kept: the heading of section 4 is spelled so.
inline constexpr std::string_view Adjustments = "Ajustments to Class 1A NICs";
inline constexpr std::string_view BenefitsOfSection1 =
    "Enter the total benefits liable to Class 1A NICs from Section 1, box A";
inline constexpr std::string_view AddAmounts = "Add any amounts not included in box A on which Class 1A NICs are due";
inline constexpr std::string_view DeductAmounts =
    "Deduct any amounts included in box A on which Class 1A NICs are not due";
inline constexpr std::string_view TotalDue = "Total of benefits on which Class 1A NICs are due";
inline constexpr std::string_view AmountToBeAdded = "Amount to be added";
inline constexpr std::string_view AmountToBeDeducted = "Amount to be deducted";
inline constexpr std::string_view BriefDescription = "Brief description";

/// Asked before the adjustments go.
inline constexpr std::string_view UntickQuestion = "Untick this box?  Entries in boxes B + C will be removed.";

// The fixed notes for the employer.
std::string SendingNote();
std::string PayingNote();
std::string LateNote();
inline constexpr std::string_view NothingDueNote =
    "If your form P35 already says that no forms P11D and P11D(b) are due, you need not send this return.";
std::string BoxesNote();
std::string FormsNote();
std::string AdjustmentNote();

} // namespace quillmere::words
