#include "review/BoxHelp.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace quillmere::review {

namespace {

// clang-format off
constexpr auto Rows = std::to_array<BoxHelp>({
    // Page 1: who it is
    {.screen = "Form3", .box = "PAYEBox", .section = "Employer details", .takes = "the PAYE reference, such as 123/A456"},
    {.screen = "Form3", .box = "EmployeeNameBox", .section = "Employee details", .takes = "the surname"},
    {.screen = "Form3", .box = "EmployeeNameBox2", .section = "Employee details", .takes = "the first names"},
    {.screen = "Form3", .box = "DateofBirth", .section = "Employee details", .takes = "a date, day/month/year, not after the end of the tax year"},
    {.screen = "Form3", .box = "WorkNumberBox", .section = "Employee details", .takes = "any text"},
    {.screen = "Form3", .box = "NatIns", .section = "Employee details", .takes = "two letters, six digits and a letter, such as AB123456C"},
    {.screen = "Form3", .box = "SexBox", .section = "Employee details", .takes = "M or F"},
    // Page 1: sections A to E
    {.screen = "Form3", .box = "ADescriptionAsset", .section = "A", .class1A = true, .takes = "a description of the asset"},
    {.screen = "Form3", .box = "ACostMarketBox", .section = "A", .class1A = true, .takes = "cost or market value, in pounds and pence"},
    {.screen = "Form3", .box = "AAmountGood", .section = "A", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Form3", .box = "ACashEqu", .section = "A", .number = "13", .class1A = true, .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Form3", .box = "BDescriptionPayment", .section = "B", .takes = "a description of the payment"},
    {.screen = "Form3", .box = "B2", .section = "B", .number = "15", .takes = "the payment, in pounds and pence"},
    {.screen = "Form3", .box = "BNotTax", .section = "B", .number = "15", .takes = "tax on notional payments not borne by the employee within 90 days, in pounds and pence"},
    {.screen = "Form3", .box = "CGrossAmount", .section = "C", .takes = "the gross amount, in pounds and pence"},
    {.screen = "Form3", .box = "CAmountGood", .section = "C", .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Form3", .box = "CCashEqu", .section = "C", .number = "12", .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Form3", .box = "DCashEqu", .section = "D", .number = "14", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it"},
    {.screen = "Form3", .box = "ETaxAmount", .section = "E", .number = "12", .takes = "the taxable amount, in pounds and pence; the calculation behind the picture fills it"},
    // Cars, on page 1 and the screens of the further cars
    {.screen = "Form3 Form3_4 Form5_6", .box = "FMakeModel", .section = "F", .class1A = true, .takes = "make and model"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FRegDate", .section = "F", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FC02", .section = "F", .class1A = true, .takes = "whole grams per kilometre, from the approval certificate"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FEngine", .section = "F", .class1A = true, .takes = "whole cubic centimetres"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FFuel", .section = "F", .class1A = true, .takes = "a key letter of the type of fuel or power"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FDateFrom", .section = "F", .class1A = true, .takes = "a date, day/month/year, not before the tax year or the date of registration"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FDateTo", .section = "F", .class1A = true, .takes = "a date, day/month/year, not before the day from which the car was available"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "txtUnavailableFirst", .section = "F", .class1A = true, .takes = "a date, day/month/year, that begins 30 days or more within the dates of the car"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "txtUnavailableLast", .section = "F", .class1A = true, .takes = "a date, day/month/year, that ends 30 days or more within the dates of the car"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FListPrice", .section = "F", .class1A = true, .takes = "the list price when it was new, in pounds and pence"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FAccessories", .section = "F", .class1A = true, .takes = "the price of all accessories, in pounds and pence"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FCaptContr", .section = "F", .class1A = true, .takes = "the employee's contribution to the price, in pounds and pence, up to the limit"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FPrivateUse", .section = "F", .class1A = true, .takes = "what the employee was required to pay for private use, in pounds and pence"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FDateWithdrawn", .section = "F", .class1A = true, .takes = "a date, day/month/year, on which the car was available"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FCashEqu", .section = "F", .class1A = true, .takes = "an amount; it is worked out again when a box of the car is left"},
    {.screen = "Form3 Form3_4 Form5_6", .box = "FFuelEqu", .section = "F", .class1A = true, .takes = "an amount; it is worked out again when a box of the car is left"},
    // Page 2
    {.screen = "Side2Form1", .box = "GVan", .section = "G", .number = "9", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it"},
    {.screen = "Side2Form1", .box = "GVanFuel", .section = "G", .number = "10", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it"},
    {.screen = "Side2Form1", .box = "HJointBorrow", .section = "H", .class1A = true, .takes = "a number of people"},
    {.screen = "Side2Form1", .box = "HOutstand", .section = "H", .class1A = true, .takes = "the balance at the start of the tax year or when it was made, in pounds and pence"},
    {.screen = "Side2Form1", .box = "HOutsand2003", .section = "H", .class1A = true, .takes = "the balance at the end of the tax year or when it was discharged, in pounds and pence"},
    {.screen = "Side2Form1", .box = "HMaxLoan", .section = "H", .class1A = true, .takes = "the highest balance in the tax year, in pounds and pence"},
    {.screen = "Side2Form1", .box = "HLoanInterest", .section = "H", .class1A = true, .takes = "the interest that the borrower paid, in pounds and pence, or NIL"},
    {.screen = "Side2Form1", .box = "HLoanDate", .section = "H", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year"},
    {.screen = "Side2Form1", .box = "HLoanDischarge", .section = "H", .class1A = true, .takes = "a date, day/month/year, not before the loan was made or after the end of the tax year"},
    {.screen = "Side2Form1", .box = "HLoanCashEqu", .section = "H", .number = "15", .class1A = true, .takes = "the cash equivalent, in pounds and pence; the calculation behind the picture fills it"},
    {.screen = "Side2Form1", .box = "IMedCost", .section = "I", .class1A = true, .takes = "what it cost you, in pounds and pence"},
    {.screen = "Side2Form1", .box = "IAmountGood", .section = "I", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Side2Form1", .box = "ICashEqu", .section = "I", .number = "11", .class1A = true, .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Side2Form1", .box = "JRelocation", .section = "J", .number = "15", .class1A = true, .takes = "what exceeds the exempt amount, in pounds and pence; the calculation behind the picture fills it"},
    {.screen = "Side2Form1", .box = "KCostYou", .section = "K", .class1A = true, .takes = "what it cost you, in pounds and pence"},
    {.screen = "Side2Form1", .box = "KAmountGood", .section = "K", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Side2Form1", .box = "KCashEqu", .section = "K", .number = "15", .class1A = true, .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Side2Form1", .box = "LDescriptAsset", .section = "L", .class1A = true, .takes = "a description of the asset"},
    {.screen = "Side2Form1", .box = "LAnnualValue", .section = "L", .class1A = true, .takes = "annual value and expenses, in pounds and pence"},
    {.screen = "Side2Form1", .box = "LAmountGood", .section = "L", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Side2Form1", .box = "LCashEqu", .section = "L", .number = "13", .class1A = true, .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Side2Form1", .box = "NDescriptItems1", .section = "N", .class1A = true, .takes = "a description of the items"},
    {.screen = "Side2Form1", .box = "NCostYou1", .section = "N", .class1A = true, .takes = "what it cost you, in pounds and pence"},
    {.screen = "Side2Form1", .box = "NAmountGood1", .section = "N", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Side2Form1", .box = "NCashEqu1", .section = "N", .number = "15", .class1A = true, .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Side2Form1", .box = "NDescriptItems2", .section = "N", .takes = "a description of the items"},
    {.screen = "Side2Form1", .box = "NCostYou2", .section = "N", .takes = "what it cost you, in pounds and pence"},
    {.screen = "Side2Form1", .box = "NAmountGood2", .section = "N", .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Side2Form1", .box = "NCashEqu2", .section = "N", .number = "15", .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Side2Form1", .box = "NTaxPaid", .section = "N", .number = "15", .takes = "tax that a director's pay should have borne, in pounds and pence"},
    {.screen = "Side2Form1", .box = "OEntertainTick", .section = "O", .takes = "Y or N"},
    {.screen = "Side2Form1", .box = "OCostYou", .section = "O", .takes = "what it cost you, in pounds and pence"},
    {.screen = "Side2Form1", .box = "OAmountGood", .section = "O", .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "Side2Form1", .box = "OCashEqu", .section = "O", .number = "16", .takes = "an amount; it is worked out again when cost or made good is left"},
    {.screen = "Side2Form1", .box = "ODescExpenses", .section = "O", .takes = "a description of the expenses"},
    // The lists behind the sections
    {.screen = "ANotepad", .box = "Description", .section = "A", .class1A = true, .takes = "what was transferred"},
    {.screen = "ANotepad", .box = "CostMark", .section = "A", .class1A = true, .takes = "cost or market value, in pounds and pence"},
    {.screen = "ANotepad", .box = "Tax", .section = "A", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "BNotepad", .box = "Description", .section = "B", .takes = "what was paid for"},
    {.screen = "BNotepad", .box = "Payment", .section = "B", .takes = "the payment, in pounds and pence"},
    {.screen = "BNotepad", .box = "Tax", .section = "B", .takes = "tax on notional payments, in pounds and pence"},
    {.screen = "CNotepad", .box = "Description", .section = "C", .takes = "what was given"},
    {.screen = "CNotepad", .box = "Gross", .section = "C", .takes = "the gross amount, in pounds and pence"},
    {.screen = "CNotepad", .box = "Tax", .section = "C", .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "INotepad", .box = "Description", .section = "I", .class1A = true, .takes = "what it was"},
    {.screen = "INotepad", .box = "Cost", .section = "I", .class1A = true, .takes = "what it cost you, in pounds and pence"},
    {.screen = "INotepad", .box = "AmountGood", .section = "I", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "KNotepad", .box = "Description", .section = "K", .class1A = true, .takes = "what it was"},
    {.screen = "KNotepad", .box = "Cost", .section = "K", .class1A = true, .takes = "what it cost you, in pounds and pence"},
    {.screen = "KNotepad", .box = "AmountGood", .section = "K", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "LNotepad", .box = "Description", .section = "L", .class1A = true, .takes = "what was lent"},
    {.screen = "LNotepad", .box = "AnnValue", .section = "L", .class1A = true, .takes = "annual value and expenses, in pounds and pence"},
    {.screen = "LNotepad", .box = "AmountGood", .section = "L", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "NNotepad1", .box = "Description", .section = "N", .class1A = true, .takes = "what it was"},
    {.screen = "NNotepad1", .box = "Cost", .section = "N", .class1A = true, .takes = "what it cost you, in pounds and pence"},
    {.screen = "NNotepad1", .box = "AmountGood", .section = "N", .class1A = true, .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "NNotepad2", .box = "Description", .section = "N", .takes = "what it was"},
    {.screen = "NNotepad2", .box = "Cost", .section = "N", .takes = "what it cost you, in pounds and pence"},
    {.screen = "NNotepad2", .box = "AmountGood", .section = "N", .takes = "what the employee made good or was taxed on, in pounds and pence"},
    {.screen = "NNotepad3", .box = "Description", .section = "N", .takes = "what it was"},
    {.screen = "NNotepad3", .box = "Tax", .section = "N", .takes = "the tax, in pounds and pence"},
    {.screen = "ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6", .box = "Description", .section = "O", .takes = "what it was"},
    {.screen = "ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6", .box = "Cost", .section = "O", .takes = "what it cost you, in pounds and pence"},
    {.screen = "ONotepad1 ONotepad2 ONotepad3 ONotepad4 ONotepad5 ONotepad6", .box = "AmountGood", .section = "O", .takes = "what the employee made good or was taxed on, in pounds and pence"},
    // Living accommodation
    {.screen = "DNotepad", .box = "Address", .section = "D", .class1A = true, .takes = "a line of the address"},
    {.screen = "DNotepad", .box = "Postcode", .section = "D", .class1A = true, .takes = "the postcode"},
    {.screen = "DNotepad", .box = "BasicChargeA", .section = "D", .class1A = true, .takes = "the annual value for the days in the tax year, in pounds and pence"},
    {.screen = "DNotepad", .box = "BasicChargeB", .section = "D", .class1A = true, .takes = "the rent that the employer paid for these days, in pounds and pence"},
    {.screen = "DNotepad", .box = "BasicChargeD", .section = "D", .class1A = true, .takes = "what the employee made good, in pounds and pence, at most the greater value"},
    {.screen = "DNotepad", .box = "BasicChargeE", .section = "D", .class1A = true, .takes = "an amount; it is worked out again when another box is left"},
    {.screen = "D2Notepad", .box = "FBox", .section = "D", .class1A = true, .takes = "what the accommodation cost, in pounds and pence"},
    {.screen = "D2Notepad", .box = "GBox", .section = "D", .class1A = true, .takes = "what the employee paid towards the cost, in pounds and pence"},
    {.screen = "D2Notepad", .box = "AddChargeDays", .section = "D", .class1A = true, .takes = "whole days on which it was provided, no more than the year has"},
    {.screen = "D2Notepad", .box = "MBox", .section = "D", .class1A = true, .takes = "the rent that the employee paid, in pounds and pence"},
    {.screen = "D2Notepad", .box = "NBox", .section = "D", .class1A = true, .takes = "the annual value, in pounds and pence"},
    {.screen = "D2Notepad", .box = "EBox", .section = "D", .class1A = true, .takes = "the basic charge, in pounds and pence"},
    // Mileage
    {.screen = "ENotepad", .box = "ABox", .section = "E", .takes = "what was paid for the mileage, in pounds and pence"},
    {.screen = "ENotepad", .box = "BBox", .section = "E", .takes = "what of it tax was deducted from, in pounds and pence"},
    {.screen = "ENotepad", .box = "DBox", .section = "E", .takes = "business miles"},
    {.screen = "ENotepad", .box = "KBox", .section = "E", .takes = "what was paid for passengers, in pounds and pence"},
    {.screen = "ENotepad", .box = "LBox", .section = "E", .takes = "business miles for which passenger payments were made"},
    // Vans
    {.screen = "GNotepad", .box = "VanRegNumber", .section = "G", .class1A = true, .takes = "the registration number; without one nothing is worked out"},
    {.screen = "GNotepad", .box = "DateFrom", .section = "G", .class1A = true, .takes = "a date of the tax year, day/month/year, in order"},
    {.screen = "GNotepad", .box = "DateTo", .section = "G", .class1A = true, .takes = "a date of the tax year, day/month/year, in order"},
    {.screen = "GNotepad", .box = "DBox", .section = "G", .class1A = true, .takes = "whole days; it is worked out again when a date is left"},
    {.screen = "GNotepad", .box = "GBox", .section = "G", .class1A = true, .takes = "an amount; it is worked out again when another box is left"},
    {.screen = "GNotepad", .box = "HBox", .section = "G", .class1A = true, .takes = "a whole percentage"},
    {.screen = "GNotepad", .box = "LBox", .section = "G", .class1A = true, .takes = "what the employee was required to pay for private use, in pounds and pence"},
    {.screen = "GNotepad", .box = "DateWithdrawn", .section = "G", .class1A = true, .takes = "a date, day/month/year, on which the van was available"},
    {.screen = "GNotepad2", .box = "ChangeUse", .section = "G", .class1A = true, .takes = "a date of the tax year, day/month/year, later than the one before"},
    {.screen = "GNotepad2", .box = "TypeUse", .section = "G", .class1A = true, .takes = "1 exclusive, 2 shared, 3 or 4 unavailable"},
    // Loans
    {.screen = "HNotepad", .box = "ABox", .section = "H", .class1A = true, .takes = "the balance at the start of the tax year or when it was made, in pounds and pence"},
    {.screen = "HNotepad", .box = "BBox", .section = "H", .class1A = true, .takes = "the balance at the end of the tax year or when it was discharged, in pounds and pence"},
    {.screen = "HNotepad", .box = "EBox", .section = "H", .class1A = true, .takes = "whole months; they are worked out again when another box is left"},
    {.screen = "HNotepad", .box = "JBox", .section = "H", .class1A = true, .takes = "the interest that the borrower paid, in pounds and pence"},
    {.screen = "HNotepad", .box = "MaxAmount", .section = "H", .class1A = true, .takes = "the highest balance in the tax year, in pounds and pence"},
    {.screen = "HNotepad", .box = "DateFrom", .section = "H", .class1A = true, .takes = "a date of the tax year, day/month/year, not after the day of discharge"},
    {.screen = "HNotepad", .box = "DateTo", .section = "H", .class1A = true, .takes = "a date of the tax year, day/month/year, not before the day on which it was made"},
    {.screen = "HNotepad2", .box = "Currency", .section = "H", .class1A = true, .takes = "the name of a currency"},
    {.screen = "HNotepad2", .box = "Rate", .section = "H", .class1A = true, .takes = "a rate of interest in per cent"},
    // Relocation
    {.screen = "JNotepad", .box = "ABox", .section = "J", .class1A = true, .takes = "expenses paid to others or to the employee, in pounds and pence"},
    {.screen = "JNotepad", .box = "EmployerCost", .section = "J", .class1A = true, .takes = "what the benefits cost the employer, in pounds and pence"},
    {.screen = "JNotepad", .box = "EmployeeCost", .section = "J", .class1A = true, .takes = "what the employee paid towards that cost, in pounds and pence, no more than the cost"},
    {.screen = "JNotepad", .box = "CBox", .section = "J", .class1A = true, .takes = "the cost of qualifying living accommodation, in pounds and pence"},
    {.screen = "JNotepad", .box = "QualExp", .section = "J", .class1A = true, .takes = "qualifying expenses and benefits of the year before, in pounds and pence"},
    // P11D(b)
    {.screen = "P11DDeclaration", .box = "EmployerRef", .section = "Employer details", .takes = "the PAYE reference, such as 123/A456"},
    {.screen = "P11DDeclaration", .box = "AccOfficeRef", .section = "Employer details", .takes = "the accounts office reference"},
    {.screen = "P11DDeclaration", .box = "EmployerAdd", .section = "Employer details", .takes = "a line of the address"},
    {.screen = "P11DDeclaration", .box = "ReturnAdd", .section = "Return address", .takes = "a line of the address"},
    {.screen = "P11DDeclaration", .box = "Section1BoxA", .section = "1", .number = "A", .class1A = true, .takes = "the total of all forms, in pounds and pence; it is worked out at each opening"},
    {.screen = "P11DDeclaration", .box = "InlRevOffice", .section = "2", .takes = "the office to which the forms were sent"},
    {.screen = "P11DDeclaration", .box = "SentDate", .section = "2", .takes = "a date, day/month/year"},
    {.screen = "P11DDeclaration", .box = "Section4BoxA", .section = "4", .number = "A", .class1A = true, .takes = "the total of section 1, in pounds and pence"},
    {.screen = "P11DDeclaration", .box = "Section4DescriptionB", .section = "4", .class1A = true, .takes = "a brief description"},
    {.screen = "P11DDeclaration", .box = "Section4BoxB", .section = "4", .number = "B", .class1A = true, .takes = "what is to be added, in pounds and pence"},
    {.screen = "P11DDeclaration", .box = "Section4DescriptionC", .section = "4", .class1A = true, .takes = "a brief description"},
    {.screen = "P11DDeclaration", .box = "Section4BoxC", .section = "4", .number = "C", .class1A = true, .takes = "what is to be deducted, in pounds and pence"},
    {.screen = "P11DBNotepad1 P11DBNotepad2", .box = "Description", .section = "4", .class1A = true, .takes = "what it is"},
    {.screen = "P11DBNotepad1", .box = "AmountAdded", .section = "4", .class1A = true, .takes = "what is to be added, in pounds and pence"},
    {.screen = "P11DBNotepad2", .box = "AmountDeducted", .section = "4", .class1A = true, .takes = "what is to be deducted, in pounds and pence"},
    // The car sheet and its CO2 dialog
    {.screen = "FNotepad", .box = "Make", .section = "F", .class1A = true, .takes = "the make"},
    {.screen = "FNotepad", .box = "Model", .section = "F", .class1A = true, .takes = "the model"},
    {.screen = "FNotepad", .box = "EngineSize", .section = "F", .class1A = true, .takes = "whole cubic centimetres"},
    {.screen = "FNotepad", .box = "Fuel", .section = "F", .class1A = true, .takes = "a key letter of the type of fuel or power"},
    {.screen = "FNotepad", .box = "C02Level", .section = "F", .class1A = true, .takes = "whole grams per kilometre, from the approval certificate"},
    {.screen = "FNotepad", .box = "DateReg", .section = "F", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year"},
    {.screen = "FNotepad", .box = "DateFirst", .section = "F", .class1A = true, .takes = "a date of the tax year, day/month/year"},
    {.screen = "FNotepad", .box = "DateLast", .section = "F", .class1A = true, .takes = "a date of the tax year, day/month/year"},
    {.screen = "FNotepad", .box = "txtUnavailableFirst", .section = "F", .class1A = true, .takes = "a date, day/month/year, that begins 30 days or more within the dates of the car"},
    {.screen = "FNotepad", .box = "txtUnavailableLast", .section = "F", .class1A = true, .takes = "a date, day/month/year, that ends 30 days or more within the dates of the car"},
    {.screen = "FNotepad", .box = "ListPriceBox", .section = "F", .class1A = true, .takes = "the list price when it was new, in pounds and pence"},
    {.screen = "FNotepad", .box = "AccessoriesBox", .section = "F", .class1A = true, .takes = "the price of all accessories, in pounds and pence"},
    {.screen = "FNotepad", .box = "DBox", .section = "F", .class1A = true, .takes = "the employee's contribution to the price, in pounds and pence, up to the limit"},
    {.screen = "FNotepad", .box = "TBox", .section = "F", .class1A = true, .takes = "what the employee was required to pay for private use, in pounds and pence"},
    {.screen = "FNotepad", .box = "DateWithdrawn", .section = "F", .class1A = true, .takes = "a date, day/month/year, on which the car was available"},
    {.screen = "Form1", .box = "CarReg", .section = "F", .class1A = true, .takes = "a date, day/month/year, not after the end of the tax year"},
    // Employers, employees and folders
    {.screen = "NewFile", .box = "EmployerName", .takes = "the employer's name"},
    {.screen = "NewFile", .box = "PAYE", .takes = "the PAYE reference, such as 123/A456"},
    {.screen = "NewFile", .box = "EmployeeName", .takes = "the first names"},
    {.screen = "NewFile", .box = "EmployeeSurname", .takes = "the surname"},
    {.screen = "RenameEmp", .box = "NewEmployer", .takes = "the new name"},
    {.screen = "RenameEmp", .box = "NewPAYE", .takes = "the new PAYE reference"},
    {.screen = "FindEmployee", .box = "Sought", .takes = "any part of a name, an employer, a works number or a National Insurance number"},
    {.screen = "frmFolderManager", .box = "txtName", .takes = "a name for the folder"},
    {.screen = "frmFolderManager", .box = "txtPath", .takes = "the path of a folder"},
    // Printing
    {.screen = "frmVSPrintSettings", .box = "txtVSTop", .takes = "millimetres"},
    {.screen = "frmVSPrintSettings", .box = "txtVSLeft", .takes = "millimetres"},
    {.screen = "frmVSPrintSettings", .box = "txtPDFTop", .takes = "millimetres"},
    {.screen = "frmVSPrintSettings", .box = "txtPDFLeft", .takes = "millimetres"},
    {.screen = "frmVSPrintSettings", .box = "txtVSScale", .takes = "per cent"},
    {.screen = "frmVSPrintSettings", .box = "txtPDFScale", .takes = "per cent"},
    {.screen = "frmVSPrintSettings", .box = "txtFile", .takes = "digits and points"},
    {.screen = "frmVSPrintSettings", .box = "txtAlignMethod", .takes = "a whole number"},
    {.screen = "frmVSPrintSettings", .box = "txtAlignV", .takes = "a whole number"},
    {.screen = "frmVSPrintSettings", .box = "txtAlignH", .takes = "a whole number"},
    {.screen = "frmVSPrintSettings", .box = "txtBlack", .takes = "a number"},
    {.screen = "frmVSPrintSettings", .box = "txtDark", .takes = "a number"},
    {.screen = "frmVSPrintSettings", .box = "txtLight", .takes = "a number"},
    {.screen = "frmVSPrintSettings", .box = "txtWhite", .takes = "a number"},
    {.screen = "frmVSPrintDialog", .box = "txtCopies", .takes = "a whole number"},
    {.screen = "frmVSPrintDialog", .box = "txtPageNumbers", .takes = "pages and ranges, such as 1,3-5"},
});
// clang-format on

bool IsOn(std::string_view screen, std::string_view screens)
{
    while (!screens.empty()) {
        const std::size_t end = std::min(screens.find(' '), screens.size());
        if (screens.substr(0, end) == screen)
            return true;
        screens.remove_prefix(std::min(end + 1, screens.size()));
    }
    return false;
}

/// A name without the number at its end: "FRegDate3" is one of the boxes FRegDate.
std::string_view WithoutNumber(std::string_view name)
{
    const bool isNumbered = name.back() >= '0' && name.back() <= '9';
    return name.substr(0, name.size() - (isNumbered ? 1 : 0));
}

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
    for (const std::string_view name : {box, WithoutNumber(box)}) {
        const auto* const found =
            std::ranges::find_if(Rows, [&](const BoxHelp& row) { return row.box == name && IsOn(screen, row.screen); });
        if (found != Rows.end())
            return found;
    }
    return nullptr;
}

std::string LineOf(const BoxHelp& help)
{
    if (help.section.empty())
        return fmt::format("Takes {}", help.takes);
    return fmt::format("{}{}{}{}{}: takes {}", help.section.size() == 1 ? "Section " : "", help.section,
                       help.number.empty() ? "" : ", box ", help.number, Class1AWords(help), help.takes);
}

} // namespace quillmere::review
