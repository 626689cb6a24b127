#include "review/BoxHelp.h"

#include "edition/AccommodationRates.h"
#include "edition/CarRates.h"
#include "edition/JoinedText.h"
#include "edition/LoanRates.h"
#include "edition/MileageRates.h"
#include "edition/RelocationRates.h"
#include "edition/VanRates.h"
#include "review/BoxNames.h"

#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

std::string PoundsText(int pounds)
{
    return std::string(edition::Pounds(pounds));
}

std::string PenceText(int pence)
{
    return std::string(edition::Digits(pence)) + "p";
}

// clang-format off
constexpr auto Rows = std::to_array<BoxHelp>({
    // Page 1: who it is
    {.screen = "Form3", .box = "PAYEBox", .section = "Employer details", .takes = "the PAYE reference, such as 123/A456", .about = "The employer's PAYE reference: the number of the tax office, a stroke and the employer's own reference. It must be the same on all forms of an employer and on his P11D(b); a form without it is sent back."},
    {.screen = "Form3", .box = "EmployeeNameBox", .section = "Employee details", .takes = "the surname", .about = "The surname as the payroll has it. Together with the first names it is the name under which the form is kept and found."},
    {.screen = "Form3", .box = "EmployeeNameBox2", .section = "Employee details", .takes = "the first names", .about = "The first names as the payroll has them. Together with the surname they are the name under which the form is kept and found."},
    {.screen = "Form3", .box = "DateofBirth", .section = "Employee details", .takes = "a date, day/month/year, not after the end of the tax year", .about = "Where the National Insurance number is not known the tax office needs the date of birth and the gender to know whom the form is about."},
    {.screen = "Form3", .box = "WorkNumberBox", .section = "Employee details", .takes = "any text", .about = "The employee's number or department, for your own use. Find Employee looks for it too."},
    {.screen = "Form3", .box = "NatIns", .section = "Employee details", .takes = "two letters, six digits and a letter, such as AB123456C", .about = "By this number the tax office knows whom the form is about. Where it is not known, enter date of birth and gender. Numbers made up or beginning with TN are not accepted."},
    {.screen = "Form3", .box = "SexBox", .section = "Employee details", .takes = "M or F", .about = "Needed together with the date of birth where the National Insurance number is not known."},
    // Page 1: sections A to E
    {.screen = "Form3", .box = "ADescriptionAsset", .section = "A", .class1A = true, .takes = "a description of the asset", .about = "Say what it was, so that the tax office can tell it. With lines in the list behind the picture it reads \"As per attached\". A line with an amount and no description is sent back."},
    {.screen = "Form3", .box = "ACostMarketBox", .section = "A", .class1A = true, .takes = "cost or market value, in pounds and pence", .about = "Assets given to the employee or sold below their value: enter the cost, or the market value where the asset had been used. ITEPA 2003 s.203 to s.206."},
    {.screen = "Form3", .box = "AAmountGood", .section = "A", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Form3", .box = "ACashEqu", .section = "A", .number = "13", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Form3", .box = "BDescriptionPayment", .section = "B", .takes = "a description of the payment", .about = "Bills of the employee that the employer paid, such as rent or a private telephone. Say what it was, so that the tax office can tell it. With lines in the list behind the picture it reads \"As per attached\". A line with an amount and no description is sent back."},
    {.screen = "Form3", .box = "B2", .section = "B", .number = "15", .takes = "the payment, in pounds and pence", .about = "Enter what was paid for the employee in full. Payments on which Class 1 contributions were due are no Class 1A benefit. ITEPA 2003 s.62."},
    {.screen = "Form3", .box = "BNotTax", .section = "B", .number = "15", .takes = "tax on notional payments not borne by the employee within 90 days, in pounds and pence", .about = "Tax that the employer accounted for on payments in assets or the like, and that the employee did not make good within 90 days. ITEPA 2003 s.222."},
    {.screen = "Form3", .box = "CGrossAmount", .section = "C", .takes = "the gross amount, in pounds and pence", .about = "Vouchers, credit cards and tokens: enter what providing them cost, and for a card what was paid with it. ITEPA 2003 s.87, s.94."},
    {.screen = "Form3", .box = "CAmountGood", .section = "C", .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Form3", .box = "CCashEqu", .section = "C", .number = "12", .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Form3", .box = "DCashEqu", .section = "D", .number = "14", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it", .about = "Living accommodation: the greater of annual value and rent paid, less what was made good, and the additional charge where it cost more than the limit. The picture beside the box works it out. ITEPA 2003 s.105, s.106."},
    {.screen = "Form3", .box = "ETaxAmount", .section = "E", .number = "12", .takes = "the taxable amount, in pounds and pence; the calculation behind the picture fills it", .about = "Mileage and passenger payments for the employee's own vehicle, as far as they exceed the approved amounts. The picture beside the box works it out. ITEPA 2003 s.229 to s.236."},
    // Cars, on page 1 and the screens of the further cars
    {.screen = "Form3 Form3_4 Form5_6", .box = "FMakeModel", .section = "F", .class1A = true, .takes = "make and model", .about = "Make and model as the registration document has them, to tell cars apart. It plays no part in the sum."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FRegDate", .section = "F", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year", .about = "The date on which the car was first registered. It decides whether the CO2 figure or the size of the engine counts, and from when a diesel pays a supplement. ITEPA 2003 s.133 to s.142."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FC02", .section = "F", .class1A = true, .takes = "whole grams per kilometre, from the approval certificate", .about = "The approved figure of the registration document. It is rounded down to a multiple of five and gives the percentage of the price that is charged. Without a figure tick that the car has none. ITEPA 2003 s.133 to s.139."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FEngine", .section = "F", .class1A = true, .takes = "whole cubic centimetres", .about = "Needed for a car without a CO2 figure: the size of the engine then gives the percentage. ITEPA 2003 s.140, s.142."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FFuel", .section = "F", .class1A = true, .takes = "a key letter of the type of fuel or power", .about = "The key letter of the guide to the form: F4 shows the letters. Diesel pays a supplement, some other fuels have a reduction. ITEPA 2003 s.141 and SI 2001/1123."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FDateFrom", .section = "F", .class1A = true, .takes = "a date, day/month/year, not before the tax year or the date of registration", .about = "Only if the car came in the course of the year: leave it empty for a car that was there from the first day. Days before it are taken off in proportion. ITEPA 2003 s.143."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FDateTo", .section = "F", .class1A = true, .takes = "a date, day/month/year, not before the day from which the car was available", .about = "Only if the car went in the course of the year: leave it empty for a car that goes on. Days after it are taken off in proportion, and next year the car does not run on. ITEPA 2003 s.143."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "txtUnavailableFirst", .section = "F", .class1A = true, .takes = "a date, day/month/year, that begins 30 days or more within the dates of the car", .about = "A period in which the car could not be used at all counts if it has 30 days or more without a break. ITEPA 2003 s.143."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "txtUnavailableLast", .section = "F", .class1A = true, .takes = "a date, day/month/year, that ends 30 days or more within the dates of the car", .about = "A period in which the car could not be used at all counts if it has 30 days or more without a break. ITEPA 2003 s.143."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FListPrice", .section = "F", .class1A = true, .takes = "the list price when it was new, in pounds and pence", .about = "The published price when it was new, with VAT and delivery, whatever was paid for it. Price and accessories together count {price limit}, after contributions. ITEPA 2003 s.122, s.121."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FAccessories", .section = "F", .class1A = true, .takes = "the price of all accessories, in pounds and pence", .about = "All accessories that were not in the list price, at their published price: those fitted at the start, and later ones that cost more than a small amount each. ITEPA 2003 s.126."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FCaptContr", .section = "F", .class1A = true, .takes = "the employee's contribution to the price, in pounds and pence, up to the limit", .about = "What the employee paid towards the price of car or accessories. It counts up to {contribution limit}. ITEPA 2003 s.132."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FPrivateUse", .section = "F", .class1A = true, .takes = "what the employee was required to pay for private use, in pounds and pence", .about = "What the employee had to pay, and paid, in the year for using the car privately. It is taken off the charge. ITEPA 2003 s.144."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FDateWithdrawn", .section = "F", .class1A = true, .takes = "a date, day/month/year, on which the car was available", .about = "The day on which fuel for private journeys ended for good. The days after it reduce the fuel charge unless fuel was provided again in the year: then tick reinstated. ITEPA 2003 s.152."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FCashEqu", .section = "F", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when a box of the car is left", .about = "The car's price times its percentage, less days on which it was not there and payments for private use. It goes into the total of all cars. ITEPA 2003 s.121."},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FFuelEqu", .section = "F", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when a box of the car is left", .about = "The car's percentage of {fuel multiplier}, less days without car or fuel. Payments for fuel do not reduce it unless they cover all private fuel. ITEPA 2003 s.149 to s.153."},
    // Page 2
    {.screen = "Side2Form1", .box = "GVan", .section = "G", .number = "9", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it", .about = "{van charge} for each van that may be used privately, less days without it and payments for private use. The picture beside the box works it out. ITEPA 2003 s.154 to s.159."},
    {.screen = "Side2Form1", .box = "GVanFuel", .section = "G", .number = "10", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it", .about = "{van fuel charge} where fuel for private journeys was provided, less days without it. The picture beside the box works it out. ITEPA 2003 s.160 to s.164."},
    {.screen = "Side2Form1", .box = "HJointBorrow", .section = "H", .class1A = true, .takes = "a number of people", .about = "Where several people borrowed together, how many they are. Each is charged with his part."},
    {.screen = "Side2Form1", .box = "HOutstand", .section = "H", .class1A = true, .takes = "the balance at the start of the tax year or when it was made, in pounds and pence", .about = "The balance on the first day of the tax year, or the sum lent where the loan was made in the year. ITEPA 2003 s.182."},
    {.screen = "Side2Form1", .box = "HOutsand2003", .section = "H", .class1A = true, .takes = "the balance at the end of the tax year or when it was discharged, in pounds and pence", .about = "The balance on the last day of the tax year, or when the loan was discharged. ITEPA 2003 s.182."},
    {.screen = "Side2Form1", .box = "HMaxLoan", .section = "H", .class1A = true, .takes = "the highest balance in the tax year, in pounds and pence", .about = "The highest balance of the year: loans that never came to more than {small loans} together need no entry. ITEPA 2003 s.180."},
    {.screen = "Side2Form1", .box = "HLoanInterest", .section = "H", .class1A = true, .takes = "the interest that the borrower paid, in pounds and pence, or NIL", .about = "The interest that was paid for the tax year; NIL if none was. It is taken off the interest at the official rate. ITEPA 2003 s.175."},
    {.screen = "Side2Form1", .box = "HLoanDate", .section = "H", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year", .about = "Only for a loan that was made in the course of the year: the months before do not count. ITEPA 2003 s.182."},
    {.screen = "Side2Form1", .box = "HLoanDischarge", .section = "H", .class1A = true, .takes = "a date, day/month/year, not before the loan was made or after the end of the tax year", .about = "Only for a loan that was discharged in the course of the year: the months after it do not count. ITEPA 2003 s.182."},
    {.screen = "Side2Form1", .box = "HLoanCashEqu", .section = "H", .number = "15", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it", .about = "Interest at the official rate on the average balance, for the whole months of the loan, less the interest paid. The picture beside the section works it out. ITEPA 2003 s.175, s.182."},
    {.screen = "Side2Form1", .box = "IMedCost", .section = "I", .class1A = true, .takes = "what it cost you, in pounds and pence", .about = "Enter the cost to the employer including VAT, also of a part that was for business. Only what the employee made good is taken off. ITEPA 2003 s.203, s.204."},
    {.screen = "Side2Form1", .box = "IAmountGood", .section = "I", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Side2Form1", .box = "ICashEqu", .section = "I", .number = "11", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Side2Form1", .box = "JRelocation", .section = "J", .number = "15", .class1A = true, .takes = "what exceeds the exempt amount, in pounds and pence; the calculation behind the picture fills it", .about = "Qualifying expenses of a move above {relocation limit}. The picture beside the box works it out. What does not qualify goes into section O. ITEPA 2003 s.271 to s.289."},
    {.screen = "Side2Form1", .box = "KCostYou", .section = "K", .class1A = true, .takes = "what it cost you, in pounds and pence", .about = "Enter the cost to the employer including VAT, also of a part that was for business. Only what the employee made good is taken off. ITEPA 2003 s.203, s.204."},
    {.screen = "Side2Form1", .box = "KAmountGood", .section = "K", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Side2Form1", .box = "KCashEqu", .section = "K", .number = "15", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Side2Form1", .box = "LDescriptAsset", .section = "L", .class1A = true, .takes = "a description of the asset", .about = "Say what it was, so that the tax office can tell it. With lines in the list behind the picture it reads \"As per attached\". A line with an amount and no description is sent back."},
    {.screen = "Side2Form1", .box = "LAnnualValue", .section = "L", .class1A = true, .takes = "annual value and expenses, in pounds and pence", .about = "For land its annual value, for other things a fifth of the value when they were first lent, or the rent paid if that is more; and the running expenses. ITEPA 2003 s.205."},
    {.screen = "Side2Form1", .box = "LAmountGood", .section = "L", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Side2Form1", .box = "LCashEqu", .section = "L", .number = "13", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Side2Form1", .box = "NDescriptItems1", .section = "N", .class1A = true, .takes = "a description of the items", .about = "Say what it was, so that the tax office can tell it. With lines in the list behind the picture it reads \"As per attached\". A line with an amount and no description is sent back."},
    {.screen = "Side2Form1", .box = "NCostYou1", .section = "N", .class1A = true, .takes = "what it cost you, in pounds and pence", .about = "Enter the cost to the employer including VAT, also of a part that was for business. Only what the employee made good is taken off. ITEPA 2003 s.203, s.204. These are the items on which Class 1A contributions are due."},
    {.screen = "Side2Form1", .box = "NAmountGood1", .section = "N", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Side2Form1", .box = "NCashEqu1", .section = "N", .number = "15", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Side2Form1", .box = "NDescriptItems2", .section = "N", .takes = "a description of the items", .about = "Say what it was, so that the tax office can tell it. With lines in the list behind the picture it reads \"As per attached\". A line with an amount and no description is sent back."},
    {.screen = "Side2Form1", .box = "NCostYou2", .section = "N", .takes = "what it cost you, in pounds and pence", .about = "Enter the cost to the employer including VAT. These are the items on which no Class 1A contributions are due, such as subscriptions and fees. ITEPA 2003 s.343, s.344."},
    {.screen = "Side2Form1", .box = "NAmountGood2", .section = "N", .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Side2Form1", .box = "NCashEqu2", .section = "N", .number = "15", .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Side2Form1", .box = "NTaxPaid", .section = "N", .number = "15", .takes = "tax that a director's pay should have borne, in pounds and pence", .about = "Tax on a director's pay that was paid over but not deducted from him, and that he did not make good. ITEPA 2003 s.223."},
    {.screen = "Side2Form1", .box = "OEntertainTick", .section = "O", .takes = "Y or N", .about = "Whether the employer's own tax bears the entertainment: Y for a trading organisation that does not deduct it, N for any other."},
    {.screen = "Side2Form1", .box = "OCostYou", .section = "O", .takes = "what it cost you, in pounds and pence", .about = "Enter all that was paid to the employee or for him, also what was for business only: he claims relief for that himself. ITEPA 2003 s.70 to s.72."},
    {.screen = "Side2Form1", .box = "OAmountGood", .section = "O", .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards it, or the part on which tax has already been paid through the payroll. It is taken off the cost; the result is never below nothing."},
    {.screen = "Side2Form1", .box = "OCashEqu", .section = "O", .number = "16", .worksOut = true, .takes = "an amount; it is worked out again when cost or made good is left", .about = "Cost less what was made good, never below nothing. What you type here stays until one of the two is changed."},
    {.screen = "Side2Form1", .box = "ODescExpenses", .section = "O", .takes = "a description of the expenses", .about = "Say what it was, so that the tax office can tell it. With lines in the list behind the picture it reads \"As per attached\". A line with an amount and no description is sent back."},
    // The lists behind the sections
    {.screen = "ANotepad", .box = "Description", .section = "A", .class1A = true, .takes = "what was transferred", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "ANotepad", .box = "CostMark", .section = "A", .class1A = true, .takes = "cost or market value, in pounds and pence", .about = "Enter the cost of this asset, or its market value where it had been used. OK puts the sum of the lines into the form."},
    {.screen = "ANotepad", .box = "Tax", .section = "A", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    {.screen = "BNotepad", .box = "Description", .section = "B", .takes = "what was paid for", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "BNotepad", .box = "Payment", .section = "B", .takes = "the payment, in pounds and pence", .about = "Enter this payment in full. OK puts the sum of the lines into the form."},
    {.screen = "BNotepad", .box = "Tax", .section = "B", .takes = "tax on notional payments, in pounds and pence", .about = "Tax that the employer accounted for on this payment and the employee did not make good within 90 days. OK puts the sum of the lines into the form."},
    {.screen = "CNotepad", .box = "Description", .section = "C", .takes = "what was given", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "CNotepad", .box = "Gross", .section = "C", .takes = "the gross amount, in pounds and pence", .about = "Enter the expense of providing this voucher or what was paid with the card. OK puts the sum of the lines into the form."},
    {.screen = "CNotepad", .box = "Tax", .section = "C", .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    {.screen = "INotepad", .box = "Description", .section = "I", .class1A = true, .takes = "what it was", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "INotepad", .box = "Cost", .section = "I", .class1A = true, .takes = "what it cost you, in pounds and pence", .about = "Enter the whole cost of this item including VAT. The lines are added up, and OK puts the sum into the form."},
    {.screen = "INotepad", .box = "AmountGood", .section = "I", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    {.screen = "KNotepad", .box = "Description", .section = "K", .class1A = true, .takes = "what it was", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "KNotepad", .box = "Cost", .section = "K", .class1A = true, .takes = "what it cost you, in pounds and pence", .about = "Enter the whole cost of this item including VAT. The lines are added up, and OK puts the sum into the form."},
    {.screen = "KNotepad", .box = "AmountGood", .section = "K", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    {.screen = "LNotepad", .box = "Description", .section = "L", .class1A = true, .takes = "what was lent", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "LNotepad", .box = "AnnValue", .section = "L", .class1A = true, .takes = "annual value and expenses, in pounds and pence", .about = "Enter the annual value of this asset for its part of the year, and the expenses of providing it. OK puts the sum of the lines into the form."},
    {.screen = "LNotepad", .box = "AmountGood", .section = "L", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    {.screen = "NNotepad1", .box = "Description", .section = "N", .class1A = true, .takes = "what it was", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "NNotepad1", .box = "Cost", .section = "N", .class1A = true, .takes = "what it cost you, in pounds and pence", .about = "Enter the whole cost of this item including VAT. The lines are added up, and OK puts the sum into the form."},
    {.screen = "NNotepad1", .box = "AmountGood", .section = "N", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    {.screen = "NNotepad2", .box = "Description", .section = "N", .takes = "what it was", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "NNotepad2", .box = "Cost", .section = "N", .takes = "what it cost you, in pounds and pence", .about = "Enter the whole cost of this item including VAT. The lines are added up, and OK puts the sum into the form."},
    {.screen = "NNotepad2", .box = "AmountGood", .section = "N", .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    {.screen = "NNotepad3", .box = "Description", .section = "N", .takes = "what it was", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "NNotepad3", .box = "Tax", .section = "N", .takes = "the tax, in pounds and pence", .about = "The tax that was paid over for this payment and not deducted from the director. OK puts the sum of the lines into the form."},
    {.screen = "ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6", .box = "Description", .section = "O", .takes = "what it was", .about = "One line for each item. The descriptions are printed on a list that goes with the form."},
    {.screen = "ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6", .box = "Cost", .section = "O", .takes = "what it cost you, in pounds and pence", .about = "Enter the whole cost of this item including VAT. The lines are added up, and OK puts the sum into the form."},
    {.screen = "ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6", .box = "AmountGood", .section = "O", .takes = "what the employee made good or was taxed on, in pounds and pence", .about = "Enter what the employee paid towards this item, or what of it was taxed through the payroll. The lines are added up, and OK puts the sum into the form."},
    // Living accommodation
    {.screen = "DNotepad", .box = "Address", .section = "D", .class1A = true, .takes = "a line of the address", .about = "The address is printed on the working paper of the accommodation."},
    {.screen = "DNotepad", .box = "Postcode", .section = "D", .class1A = true, .takes = "the postcode", .about = "The address is printed on the working paper of the accommodation."},
    {.screen = "DNotepad", .box = "BasicChargeA", .section = "D", .class1A = true, .takes = "the rent that the employer paid for these days, in pounds and pence", .about = "The rent that the employer paid for the days in the tax year. The greater of this and the annual value is charged. ITEPA 2003 s.105."},
    {.screen = "DNotepad", .box = "BasicChargeB", .section = "D", .class1A = true, .takes = "the annual value for the days in the tax year, in pounds and pence", .about = "The rateable value, or an estimate of what it would be, for the days in the tax year. The greater of this and the rent is charged. ITEPA 2003 s.105, s.110."},
    {.screen = "DNotepad", .box = "BasicChargeD", .section = "D", .class1A = true, .takes = "what the employee made good, in pounds and pence, at most the greater value", .about = "What the employee paid for living there. Enter no more than the greater value: with more the basic charge would stay at that value. What is over counts against the additional charge. ITEPA 2003 s.105."},
    {.screen = "DNotepad", .box = "BasicChargeE", .section = "D", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when another box is left", .about = "The greater of rent and annual value, less what was made good. It goes on to the additional charge and into the form. ITEPA 2003 s.105."},
    {.screen = "D2Notepad", .box = "FBox", .section = "D", .class1A = true, .takes = "what the accommodation cost, in pounds and pence", .about = "What the employer paid for the accommodation, and for improvements before the tax year. Above {accommodation limit} an additional charge is due. ITEPA 2003 s.104, s.106."},
    {.screen = "D2Notepad", .box = "GBox", .section = "D", .class1A = true, .takes = "what the employee paid towards the cost, in pounds and pence", .about = "What the employee paid towards the cost, or for being granted the right to live there. It is taken off the cost. ITEPA 2003 s.104."},
    {.screen = "D2Notepad", .box = "AddChargeDays", .section = "D", .class1A = true, .takes = "whole days on which it was provided, no more than the year has", .about = "Leave it empty if the accommodation was provided for the whole year. Otherwise the charge is that part of it. ITEPA 2003 s.106."},
    {.screen = "D2Notepad", .box = "MBox", .section = "D", .class1A = true, .takes = "the rent that the employee paid, in pounds and pence", .about = "All rent that the employee paid for the accommodation. What exceeds the annual value reduces the additional charge. ITEPA 2003 s.106."},
    {.screen = "D2Notepad", .box = "NBox", .section = "D", .class1A = true, .takes = "the annual value, in pounds and pence", .about = "The annual value as in the basic charge: so much of the rent has been counted there. ITEPA 2003 s.106."},
    {.screen = "D2Notepad", .box = "EBox", .section = "D", .class1A = true, .takes = "the basic charge, in pounds and pence", .about = "The basic charge from the page before. Both charges together are the cash equivalent. ITEPA 2003 s.103."},
    // Mileage
    {.screen = "ENotepad", .box = "ABox", .section = "E", .takes = "what was paid for the mileage, in pounds and pence", .about = "All mileage allowance paid for business miles in the employee's own vehicle. ITEPA 2003 s.229."},
    {.screen = "ENotepad", .box = "BBox", .section = "E", .takes = "what of it tax was deducted from, in pounds and pence", .about = "What of it has been taxed through the payroll. It is taken off. ITEPA 2003 s.229."},
    {.screen = "ENotepad", .box = "DBox", .section = "E", .takes = "business miles", .about = "Business miles of the year. A car or van has {first mileage rate} for the first {mileage band} miles and {second mileage rate} above. ITEPA 2003 s.230."},
    {.screen = "ENotepad", .box = "KBox", .section = "E", .takes = "what was paid for passengers, in pounds and pence", .about = "What was paid for passengers on business journeys. Up to {passenger rate} a mile for each is free. ITEPA 2003 s.233, s.234."},
    {.screen = "ENotepad", .box = "LBox", .section = "E", .takes = "business miles for which passenger payments were made", .about = "The miles of each passenger added up: 100 miles with two passengers are 200. ITEPA 2003 s.234."},
    // Vans
    {.screen = "GNotepad", .box = "VanRegNumber", .section = "G", .class1A = true, .takes = "the registration number; without one nothing is worked out", .about = "Each van by its registration number. The three tabs hold three vans."},
    {.screen = "GNotepad", .box = "DateFrom", .section = "G", .class1A = true, .takes = "a date of the tax year, day/month/year, in order", .about = "The first pair is when the van was available: leave it empty for the whole year. The two further pairs are periods of 30 days or more in which it was not. ITEPA 2003 s.156."},
    {.screen = "GNotepad", .box = "DateTo", .section = "G", .class1A = true, .takes = "a date of the tax year, day/month/year, in order", .about = "The first pair is when the van was available: leave it empty for the whole year. The two further pairs are periods of 30 days or more in which it was not. ITEPA 2003 s.156."},
    {.screen = "GNotepad", .box = "DBox", .section = "G", .class1A = true, .worksOut = true, .takes = "whole days; it is worked out again when a date is left", .about = "Days in the two further periods on which the van was not available. They reduce the charge in proportion. ITEPA 2003 s.156."},
    {.screen = "GNotepad", .box = "GBox", .section = "G", .class1A = true, .worksOut = true, .takes = "an amount; it is worked out again when another box is left", .about = "The charge for the year less the deduction for days without the van. ITEPA 2003 s.155, s.156."},
    {.screen = "GNotepad", .box = "HBox", .section = "G", .class1A = true, .takes = "a whole percentage", .about = "Where several employees share the van: the part in per cent that is taken off this employee's charge, as is just and reasonable. ITEPA 2003 s.157."},
    {.screen = "GNotepad", .box = "LBox", .section = "G", .class1A = true, .takes = "what the employee was required to pay for private use, in pounds and pence", .about = "Payments that the employee had to make for private use, in the year. They do not reduce the fuel charge. ITEPA 2003 s.158."},
    {.screen = "GNotepad", .box = "DateWithdrawn", .section = "G", .class1A = true, .takes = "a date, day/month/year, on which the van was available", .about = "The day on which fuel for private journeys ended. The days after it reduce the fuel charge. ITEPA 2003 s.163."},
    {.screen = "GNotepad2", .box = "ChangeUse", .section = "G", .class1A = true, .takes = "a date of the tax year, day/month/year, later than the one before", .about = "The day from which the van was used in another way. This record is kept for an earlier method; nothing is worked out from it."},
    {.screen = "GNotepad2", .box = "TypeUse", .section = "G", .class1A = true, .takes = "1 exclusive, 2 shared, 3 or 4 unavailable", .about = "How the van was used from that day: F4 shows the types. This record is kept for an earlier method; nothing is worked out from it."},
    // Loans
    {.screen = "HNotepad", .box = "ABox", .section = "H", .class1A = true, .takes = "the balance at the start of the tax year or when it was made, in pounds and pence", .about = "The balance on the first day of the tax year, or the sum lent where the loan was made in the year. ITEPA 2003 s.182."},
    {.screen = "HNotepad", .box = "BBox", .section = "H", .class1A = true, .takes = "the balance at the end of the tax year or when it was discharged, in pounds and pence", .about = "The balance on the last day of the tax year, or when it was discharged. Average balance is half of both. ITEPA 2003 s.182."},
    {.screen = "HNotepad", .box = "EBox", .section = "H", .class1A = true, .worksOut = true, .takes = "whole months; they are worked out again when another box is left", .about = "Whole tax months, from the 6th to the 5th, in which the loan was owing. ITEPA 2003 s.182."},
    {.screen = "HNotepad", .box = "JBox", .section = "H", .class1A = true, .takes = "the interest that the borrower paid, in pounds and pence", .about = "The interest that the employee paid for the tax year. It is taken off the interest at the official rate. ITEPA 2003 s.175."},
    {.screen = "HNotepad", .box = "MaxAmount", .section = "H", .class1A = true, .takes = "the highest balance in the tax year, in pounds and pence", .about = "The highest balance of the year, for the form. It plays no part in the sum. Loans that never came to more than {small loans} together need no entry. ITEPA 2003 s.180."},
    {.screen = "HNotepad", .box = "DateFrom", .section = "H", .class1A = true, .takes = "a date of the tax year, day/month/year, not after the day of discharge", .about = "Only for a loan made in the course of the year. ITEPA 2003 s.182."},
    {.screen = "HNotepad", .box = "DateTo", .section = "H", .class1A = true, .takes = "a date of the tax year, day/month/year, not before the day on which it was made", .about = "Only for a loan discharged in the course of the year. ITEPA 2003 s.182."},
    {.screen = "HNotepad2", .box = "Currency", .section = "H", .class1A = true, .takes = "the name of a currency", .about = "The currencies in which loans are made. The first is sterling with the official rate."},
    {.screen = "HNotepad2", .box = "Rate", .section = "H", .class1A = true, .takes = "a rate of interest in per cent", .about = "The official rate of interest for loans in this currency. Loans take the rate when their currency is chosen. ITEPA 2003 s.181."},
    // Relocation
    {.screen = "JNotepad", .box = "ABox", .section = "J", .class1A = true, .takes = "expenses paid to others or to the employee, in pounds and pence", .about = "Qualifying expenses of the move that the employer paid. ITEPA 2003 s.272 to s.286."},
    {.screen = "JNotepad", .box = "EmployerCost", .section = "J", .class1A = true, .takes = "what the benefits cost the employer, in pounds and pence", .about = "What qualifying benefits of the move cost the employer. ITEPA 2003 s.272 to s.286."},
    {.screen = "JNotepad", .box = "EmployeeCost", .section = "J", .class1A = true, .takes = "what the employee paid towards that cost, in pounds and pence, no more than the cost", .about = "What the employee paid towards them. It is taken off."},
    {.screen = "JNotepad", .box = "CBox", .section = "J", .class1A = true, .takes = "the cost of qualifying living accommodation, in pounds and pence", .about = "Accommodation that was provided because of the move, at its cash equivalent. ITEPA 2003 s.287(5)."},
    {.screen = "JNotepad", .box = "QualExp", .section = "J", .class1A = true, .takes = "qualifying expenses and benefits of the year before, in pounds and pence", .about = "What of the limit of {relocation limit} was used up last year: it is one limit for a move, however many years it takes. ITEPA 2003 s.287."},
    // P11D(b)
    {.screen = "P11DDeclaration", .box = "EmployerRef", .section = "Employer details", .takes = "the PAYE reference, such as 123/A456", .about = "The employer's PAYE reference, as on the forms of his employees."},
    {.screen = "P11DDeclaration", .box = "AccOfficeRef", .section = "Employer details", .takes = "the accounts office reference", .about = "The reference of the payslip booklet, of thirteen characters. Class 1A contributions are paid under it."},
    {.screen = "P11DDeclaration", .box = "EmployerAdd", .section = "Employer details", .takes = "a line of the address", .about = "The employer's address, printed at the head of the P11D(b)."},
    {.screen = "P11DDeclaration", .box = "ReturnAdd", .section = "Return address", .takes = "a line of the address", .about = "The tax office to which the P11D(b) goes, printed in its window."},
    {.screen = "P11DDeclaration", .box = "Section1BoxA", .section = "1", .number = "A", .class1A = true, .worksOut = true, .takes = "the total of all forms, in pounds and pence; it is worked out at each opening", .about = "All Class 1A benefits of all employees of the employer, added up from their forms. What you type stands until it is opened again."},
    {.screen = "P11DDeclaration", .box = "InlRevOffice", .section = "2", .takes = "the office to which the forms were sent", .about = "Where forms P11D have been sent already: the office that has them."},
    {.screen = "P11DDeclaration", .box = "SentDate", .section = "2", .takes = "a date, day/month/year", .about = "Where forms P11D have been sent already: when."},
    {.screen = "P11DDeclaration", .box = "Section4BoxA", .section = "4", .number = "A", .class1A = true, .takes = "the total of section 1, in pounds and pence", .about = "The total of section 1, to be adjusted here. Adjust here and not on the forms: NIM15400."},
    {.screen = "P11DDeclaration", .box = "Section4DescriptionB", .section = "4", .class1A = true, .takes = "a brief description", .about = "What is added, in a few words; the list behind the picture has room for more."},
    {.screen = "P11DDeclaration", .box = "Section4BoxB", .section = "4", .number = "B", .class1A = true, .takes = "what is to be added, in pounds and pence", .about = "Benefits on which Class 1A contributions are due and that are on no form."},
    {.screen = "P11DDeclaration", .box = "Section4DescriptionC", .section = "4", .class1A = true, .takes = "a brief description", .about = "What is deducted, in a few words; the list behind the picture has room for more."},
    {.screen = "P11DDeclaration", .box = "Section4BoxC", .section = "4", .number = "C", .class1A = true, .takes = "what is to be deducted, in pounds and pence", .about = "Benefits on the forms on which no Class 1A contributions are due, such as those with a full deduction. NIM15400."},
    {.screen = "P11DBNotepad1 P11DBNotepad2", .box = "Description", .section = "4", .class1A = true, .takes = "what it is", .about = "One line for each item; the list is printed with the P11D(b)."},
    {.screen = "P11DBNotepad1", .box = "AmountAdded", .section = "4", .class1A = true, .takes = "what is to be added, in pounds and pence", .about = "Benefits on which Class 1A contributions are due and that are on no form. OK puts the sum into section 4."},
    {.screen = "P11DBNotepad2", .box = "AmountDeducted", .section = "4", .class1A = true, .takes = "what is to be deducted, in pounds and pence", .about = "Benefits on the forms on which no Class 1A contributions are due. OK puts the sum into section 4."},
    // The car sheet and its CO2 dialog
    {.screen = "FNotepad", .box = "Make", .section = "F", .class1A = true, .takes = "the make", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. Make of the car."},
    {.screen = "FNotepad", .box = "Model", .section = "F", .class1A = true, .takes = "the model", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. Model of the car."},
    {.screen = "FNotepad", .box = "EngineSize", .section = "F", .class1A = true, .takes = "whole cubic centimetres", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The size of the engine, for a car without a CO2 figure."},
    {.screen = "FNotepad", .box = "Fuel", .section = "F", .class1A = true, .takes = "a key letter of the type of fuel or power", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The key letter of the fuel: F4 shows the letters."},
    {.screen = "FNotepad", .box = "C02Level", .section = "F", .class1A = true, .takes = "whole grams per kilometre, from the approval certificate", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The approved CO2 figure."},
    {.screen = "FNotepad", .box = "DateReg", .section = "F", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The date on which the car was first registered."},
    {.screen = "FNotepad", .box = "DateFirst", .section = "F", .class1A = true, .takes = "a date of the tax year, day/month/year", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The first day on which it was available."},
    {.screen = "FNotepad", .box = "DateLast", .section = "F", .class1A = true, .takes = "a date of the tax year, day/month/year", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The last day on which it was available."},
    {.screen = "FNotepad", .box = "txtUnavailableFirst", .section = "F", .class1A = true, .takes = "a date, day/month/year, that begins 30 days or more within the dates of the car", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. A period of 30 days or more without the car."},
    {.screen = "FNotepad", .box = "txtUnavailableLast", .section = "F", .class1A = true, .takes = "a date, day/month/year, that ends 30 days or more within the dates of the car", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. A period of 30 days or more without the car."},
    {.screen = "FNotepad", .box = "ListPriceBox", .section = "F", .class1A = true, .takes = "the list price when it was new, in pounds and pence", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The published price when it was new."},
    {.screen = "FNotepad", .box = "AccessoriesBox", .section = "F", .class1A = true, .takes = "the price of all accessories, in pounds and pence", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The published price of the accessories."},
    {.screen = "FNotepad", .box = "DBox", .section = "F", .class1A = true, .takes = "the employee's contribution to the price, in pounds and pence, up to the limit", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. What the employee paid towards the price."},
    {.screen = "FNotepad", .box = "TBox", .section = "F", .class1A = true, .takes = "what the employee was required to pay for private use, in pounds and pence", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. What the employee paid for private use."},
    {.screen = "FNotepad", .box = "DateWithdrawn", .section = "F", .class1A = true, .takes = "a date, day/month/year, on which the car was available", .about = "This sheet works by the rules of an older year and nothing reads it: the car itself stands on the form. The day on which fuel for private journeys ended."},
    {.screen = "Form1", .box = "CarReg", .section = "F", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year", .about = "The date of registration says which figures of the reference list belong to the car."},
    // Employers, employees and folders
    {.screen = "NewFile", .box = "EmployerName", .takes = "the employer's name", .about = "The employer's name as it is to stand on the forms. All his employees are kept under it."},
    {.screen = "NewFile", .box = "PAYE", .takes = "the PAYE reference, such as 123/A456", .about = "The employer's PAYE reference. It goes on the employee's form and on the employer's P11D(b)."},
    {.screen = "NewFile", .box = "EmployeeName", .takes = "the first names", .about = "The first names as the payroll has them."},
    {.screen = "NewFile", .box = "EmployeeSurname", .takes = "the surname", .about = "The surname as the payroll has it."},
    {.screen = "RenameEmp", .box = "NewEmployer", .takes = "the new name", .about = "The name that the employer is to have on all forms of his employees and on his P11D(b)."},
    {.screen = "RenameEmp", .box = "NewPAYE", .takes = "the new PAYE reference", .about = "The PAYE reference that all forms of the employer are to have."},
    {.screen = "EmployerList EmployeeList PrePrint TransferList", .box = "ListFilter", .takes = "any part of the names to show", .about = "Only the names that have each typed part show; empty, all of them show in their own order. Up and Down choose in the list, Enter goes on with the chosen one."},
    {.screen = "FindEmployee", .box = "Sought", .takes = "any part of a name, an employer, a works number or a National Insurance number", .about = "With several words each of them must fit. Capitals and accents do not count. Up and Down choose in the list, Enter opens."},
    {.screen = "HelpBook", .box = "HelpSought", .takes = "words to look for in the guide", .about = "The list below keeps the sections that have every word. Up and Down choose one while you type on."},
    {.screen = "OverviewList", .box = "Filter", .takes = "words that the lines to be listed have, in any column", .about = "With several words each of them must fit. Capitals and accents do not count. Up and Down choose in the list, Enter opens."},
    {.screen = "ChangeHistory", .box = "Day", .takes = "a date, day/month/year; empty for all days", .about = "Only what was done on this day is listed."},
    {.screen = "frmFolderManager", .box = "txtName", .takes = "a name for the folder", .about = "The name under which the folder stands in the Folder menu."},
    {.screen = "frmFolderManager", .box = "txtPath", .takes = "the path of a folder", .about = "The folder that holds, or is to hold, a database of its own."},
    {.screen = "ShareFolder", .box = "ServerHost", .takes = "the name of a computer, or the folder of a server's socket on this one", .about = "Where the server is that is to have the clients of this folder. Whoever looks after it knows; empty, it is on this computer."},
    {.screen = "ShareFolder", .box = "ServerPort", .takes = "a whole number; empty for the usual one", .about = "The port at which the server answers. It is 5432 unless whoever looks after it says otherwise."},
    {.screen = "ShareFolder", .box = "ServerDatabase", .takes = "the name of a database; empty for the one called as the user", .about = "The database on the server that holds the folders of the office, each in a schema of its own."},
    {.screen = "ShareFolder", .box = "ServerUser", .takes = "the name of a user of the server; empty for the one who has logged in here", .about = "Under this name the server knows you. It needs the right to make a schema in the database."},
    {.screen = "ShareFolder", .box = "ServerSchema", .takes = "small letters, digits and lines", .about = "The name that this folder alone has in the database. It may not be there yet, or must be empty."},
    // Printing
    {.screen = "PdfFiles", .box = "PdfFolder", .takes = "the path of a folder that is there", .about = "The folder into which the PDF files are written. It is remembered for the next time."},
    {.screen = "frmVSPrintSettings", .box = "txtVSTop", .takes = "millimetres", .about = "It is used for all pages of a document and kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtVSLeft", .takes = "millimetres", .about = "It is used for all pages of a document and kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtPDFTop", .takes = "millimetres", .about = "It is used for all pages of a document and kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtPDFLeft", .takes = "millimetres", .about = "It is used for all pages of a document and kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtVSScale", .takes = "per cent", .about = "It is used for all pages of a document and kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtPDFScale", .takes = "per cent", .about = "It is used for all pages of a document and kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtFile", .takes = "digits and points", .about = "The name that is proposed for a PDF file."},
    {.screen = "frmVSPrintSettings", .box = "txtAlignMethod", .takes = "a whole number", .about = "It is kept with the settings for older programs."},
    {.screen = "frmVSPrintSettings", .box = "txtAlignV", .takes = "a whole number", .about = "It is kept with the settings for older programs."},
    {.screen = "frmVSPrintSettings", .box = "txtAlignH", .takes = "a whole number", .about = "It is kept with the settings for older programs."},
    {.screen = "frmVSPrintSettings", .box = "txtBlack", .takes = "a number", .about = "The grey of what prints black, kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtDark", .takes = "a number", .about = "The grey of dark bands, kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtLight", .takes = "a number", .about = "The grey of light panels, kept with the settings."},
    {.screen = "frmVSPrintSettings", .box = "txtWhite", .takes = "a number", .about = "The grey of what prints white, kept with the settings."},
    {.screen = "frmVSPrintDialog", .box = "txtCopies", .takes = "a whole number", .about = "How many copies the printer makes, 999 at most."},
    {.screen = "frmVSPrintDialog", .box = "txtPageNumbers", .takes = "pages and ranges, such as 1,3-5", .about = "The pages that are printed, in any order of pages and ranges."},
});
// clang-format on

/// A figure of the year that a text names in braces.
struct FigureRow {
    std::string_view mark;
    std::string (*text)();
};
constexpr auto Figures = std::to_array<FigureRow>({
    {"{price limit}",
     [] { return edition::MaximumCarPrice ? "up to " + PoundsText(*edition::MaximumCarPrice) : "without a limit"; }},
    {"{contribution limit}", [] { return PoundsText(edition::MaximumCapitalContribution); }},
    {"{fuel multiplier}", [] { return PoundsText(edition::CarFuelMultiplier); }},
    {"{van charge}", [] { return PoundsText(edition::Vans.charge); }},
    {"{van fuel charge}", [] { return PoundsText(edition::Vans.fuelCharge); }},
    {"{small loans}", [] { return PoundsText(edition::SmallLoansTo); }},
    {"{relocation limit}", [] { return PoundsText(edition::RelocationExemption); }},
    {"{accommodation limit}", [] { return PoundsText(edition::Accommodation.costLimit); }},
    {"{mileage band}", [] { return std::string(edition::Digits(edition::Mileage.firstBand)); }},
    {"{first mileage rate}", [] { return PenceText(edition::Mileage.vehicles[0].first); }},
    {"{second mileage rate}", [] { return PenceText(edition::Mileage.vehicles[0].second); }},
    {"{passenger rate}", [] { return PenceText(edition::Mileage.passenger); }},
});

/// A box of the return counts or does not; what has no place on it says nothing.
std::string_view Class1AWords(const BoxHelp& help)
{
    const bool isOfForm = help.section.size() == 1;
    return !isOfForm ? "" : help.class1A ? ", Class 1A" : ", no Class 1A";
}

} // namespace

std::span<const BoxHelp> AllBoxHelp()
{
    return Rows;
}

const BoxHelp* HelpOf(std::string_view screen, std::string_view box)
{
    return RowOf(Rows, screen, box);
}

std::string LineOf(const BoxHelp& help)
{
    if (help.section.empty())
        return fmt::format("Takes {}", help.takes);
    return fmt::format("{}{}{}{}{}: takes {}", help.section.size() == 1 ? "Section " : "", help.section,
                       help.number.empty() ? "" : ", box ", help.number, Class1AWords(help), help.takes);
}

std::string AboutOf(const BoxHelp& help)
{
    std::string about(help.about);
    for (const FigureRow& figure : Figures)
        if (const std::size_t at = about.find(figure.mark); at != std::string::npos)
            about.replace(at, figure.mark.size(), figure.text());
    return about;
}

std::string WhatsThisOf(const BoxHelp& help, std::string_view spoken)
{
    return fmt::format("{}{}{}.\n\n{}", spoken, spoken.empty() ? "" : "\n", LineOf(help), AboutOf(help));
}

} // namespace quillmere::review
