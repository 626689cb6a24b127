#pragma once

#include <array>
#include <span>
#include <string_view>

/// The clients with whom somebody new looks round: people who do not exist, with forms as the screens would have stored
/// them. A test opens each form and demands that the rules give the same figures.
namespace quillmere::edition {

struct SampleField {
    std::string_view table, field, text;
};

struct SampleClient {
    std::string_view employer, payeReference;
    std::string_view firstName, surname;
    std::span<const SampleField> fields;
};

namespace sample {

/// A car with fuel, medical insurance.
inline constexpr auto AnnaBaker = std::to_array<SampleField>({
    {"P11D", "NatIns", "AB123456A"},
    {"P11D", "WorkNumberBox", "Sales 1"},
    {"P11D", "FMakeModel1", "Estate 2.0"},
    {"P11D", "FRegDate1", "12/03/2008"},
    {"P11D", "FC021", "149"},
    {"P11D", "FEngine1", "1968"},
    {"P11D", "FFuel1", "D"},
    {"P11D", "FListPrice1", "  19500.00"},
    {"P11D", "FAccessories1", "    650.00"},
    {"P11D", "FPrivateUse1", "    240.00"},
    {"P11D", "FCashEqu1", "   3991.00"},
    {"P11D", "FFuelEqu1", "   3780.00"},
    {"P11D", "FFuelTick1", "1"},
    {"P11D", "FCBox1", "  20150.00"},
    {"P11D", "FEBox1", "  20150.00"},
    {"P11D", "FGBox1", "145"},
    {"P11D", "FHBox1", "21"},
    {"P11D", "FJBox1", "0"},
    {"P11D", "FMBox1", "0"},
    {"P11D", "FNBox1", "21"},
    {"P11D", "FPBox1", "   4231.00"},
    {"P11D", "FSBox1", "   4231.00"},
    {"P11D", "FUBox1", "   3991.00"},
    {"P11D", "FVBox1", "   3780.00"},
    {"P11D", "FTotalCashCars", "   3991.00"},
    {"P11D", "FTotalCashFuel", "   3780.00"},
    {"P11D", "IMedCost", "    420.00"},
    {"P11D", "ICashEqu", "    420.00"},
});
/// An asset, travelling.
inline constexpr auto BenCarter = std::to_array<SampleField>({
    {"P11D", "NatIns", "AB123456B"},
    {"P11D", "WorkNumberBox", "Sales 2"},
    {"P11D", "ADescriptionAsset", "Laptop computer"},
    {"P11D", "ACostMarketBox", "    800.00"},
    {"P11D", "AAmountGood", "    150.00"},
    {"P11D", "ACashEqu", "    650.00"},
    {"P11D", "OCostYou1", "   1250.00"},
    {"P11D", "OCashEqu1", "   1250.00"},
});
/// Items of a list, and what has to be looked at: no National Insurance number, more made good than it cost.
inline constexpr auto ClaraDunn = std::to_array<SampleField>({
    {"P11D", "WorkNumberBox", "Office"},
    {"NNotepad1", "Description1", "Gymnasium"},
    {"NNotepad1", "Cost1", "    360.00"},
    {"NNotepad1", "Description2", "Sailing club"},
    {"NNotepad1", "Cost2", "    150.00"},
    {"P11D", "NDescriptItems1", "As per attached"},
    {"P11D", "NCostYou1", "    510.00"},
    {"P11D", "NCashEqu1", "    510.00"},
    {"P11D", "KCostYou", "    100.00"},
    {"P11D", "KAmountGood", "    120.00"},
    {"P11D", "KCashEqu", "      0.00"},
});
/// Vouchers and a home telephone.
inline constexpr auto EmmaFox = std::to_array<SampleField>({
    {"P11D", "NatIns", "AB123456C"},
    {"P11D", "BDescriptionPayment", "Home telephone line"},
    {"P11D", "B2", "    132.50"},
    {"P11D", "CGrossAmount", "    240.00"},
    {"P11D", "CCashEqu", "    240.00"},
});
/// Nothing yet.
inline constexpr auto FrankGreen = std::to_array<SampleField>({{"P11D", "NatIns", "AB123456D"}});

} // namespace sample

inline constexpr auto SampleClients = std::to_array<SampleClient>({
    {"Sample Trading Ltd", "123/SA456", "Anna", "Baker", sample::AnnaBaker},
    {"Sample Trading Ltd", "123/SA456", "Ben", "Carter", sample::BenCarter},
    {"Sample Trading Ltd", "123/SA456", "Clara", "Dunn", sample::ClaraDunn},
    {"Sample Services plc", "456/SB789", "Emma", "Fox", sample::EmmaFox},
    {"Sample Services plc", "456/SB789", "Frank", "Green", sample::FrankGreen},
});

} // namespace quillmere::edition
