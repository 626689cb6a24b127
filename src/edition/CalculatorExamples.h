#pragma once

#include <array>
#include <string_view>

/// Examples that the tax authority has published, with the figures that must come out for 2010-11, and the cases in
/// which the rules of this edition differ from the authority's. EIM: Employment Income Manual; NIM: National Insurance
/// Manual; ITEPA: Income Tax (Earnings and Pensions) Act 2003.
namespace quillmere::edition {

/// How a published example holds for this year.
enum class ExampleKind {
    Direct,  ///< as it stands
    Shifted, ///< published for a year near by; worked from it with the rates or the length of this year
};

/// An example. Facts and figures are texts of the form "name=text; name=text"; the rule says which names it knows.
struct CalculatorExample {
    std::string_view code;
    std::string_view rule; ///< which calculator works it
    std::string_view facts;
    std::string_view words; ///< the facts for a reader
    std::string_view expected;
    std::string_view source;
    ExampleKind kind = ExampleKind::Direct;
    std::string_view ours = {}; ///< what comes out here instead where the rules differ; empty: what is expected
    std::string_view why = {};  ///< and in what they differ
};

/// A car's date of registration where an example names none: the CO2 figure decides, and no fuel has another rule.
inline constexpr std::string_view ExampleRegistration = "01/02/2008";

// clang-format off
inline constexpr auto CalculatorExamples = std::to_array<CalculatorExample>({
    // Cars
    {"C1", "car", "fuel=P; co2=119; price=15000", "Petrol, 119 g/km, price 15,000", "N=10; charge=1500.00", "EIM25020, EIM25060"},
    {"C2", "car", "fuel=D; co2=119; price=15000", "Diesel, 119 g/km, price 15,000", "N=13; charge=1950.00", "EIM25055, EIM24605"},
    {"C3", "car", "fuel=H; co2=120; price=17000", "Hybrid, 120 g/km, price 17,000", "N=10; charge=1700.00", "EIM25030"},
    {"C4", "car", "fuel=P; co2=183; price=15000", "Petrol, 183 g/km, price 15,000", "G=180; N=25; charge=3750.00", "EIM25025: 24% in 2008/09, 26% in 2011/12", ExampleKind::Shifted},
    {"C5", "car", "fuel=D; co2=217; price=20000", "Diesel, 217 g/km, price 20,000", "G=215; N=35; charge=7000.00", "EIM25060: 35% in 2011/12", ExampleKind::Shifted},
    {"C6", "car", "fuel=G; co2=167; price=17600", "E85, 167 g/km, price 17,600", "G=165; N=20; charge=3520.00", "EIM25050: 19% in 2008/09", ExampleKind::Shifted},
    {"C7", "car", "registered=31/12/2005; fuel=L; co2=153; price=15000", "Diesel to Euro IV, registered 31/12/2005, 153 g/km, price 15,000", "G=150; N=19; charge=2850.00", "EIM25045: 18% in 2008/09", ExampleKind::Shifted},
    {"C8", "car", "registered=01/01/2006; fuel=L; co2=153; price=15000", "The same car, registered 01/01/2006", "G=150; N=22; charge=3300.00", "EIM25045, EIM24725: 18% and 3% in 2008/09", ExampleKind::Shifted},
    {"C9", "car", "fuel=C; co2=170; price=15700", "Bi-fuel gas, 170 g/km, price without the conversion 15,700", "N=23; charge=3611.00", "EIM25040, EIM24725", ExampleKind::Shifted},
    {"C10", "car", "fuel=P; co2=119; price=18590; accessories=795; contribution=450", "List price 18,590; paint 250, CD changer 450, special finish 95; contribution 450", "E=18935.00", "EIM24450"},
    {"C11", "days", "charge=3000; days=30", "Full-year benefit 3,000, unavailable for 30 days", "deduction=247.00; left=2753.00", "EIM25150: 246 of a leap year", ExampleKind::Shifted},
    {"C12", "car", "fuel=P; co2=119; price=15000; first=04/11/2010; last=03/12/2010", "Unavailable from 4 November to 3 December: just 30 days", "Q=30", "EIM25150"},
    {"C12a", "car", "fuel=P; co2=119; price=15000; first=04/11/2010; last=02/12/2010", "Unavailable a day less: 29 days count nothing", "Q=0", "EIM25150"},

    // Car fuel
    {"F1", "car", "fuel=P; co2=155; from=01/10/2010; withdrawn=31/01/2011", "Petrol, 155 g/km, available from 1 October, fuel withdrawn on 31 January", "N=20; V=3600.00; Q=178; W=64; X=242; Y=2387.00; fuel=1213", "EIM25615, car 2"},
    {"F2", "days", "charge=3000; days=187", "Full-year charge 3,000, car unavailable for 187 days; that the fuel began 25 days later counts nothing", "deduction=1537.00; left=1463.00", "EIM25615, car 1"},
    {"F3", "car", "fuel=P; co2=135; from=01/07/2010", "Full-year charge 2,880, car unavailable for 86 days", "N=16; V=2880.00; X=86; Y=679.00; fuel=2201", "EIM25605: 2,203 of a leap year", ExampleKind::Shifted},
    {"F4", "car", "fuel=P; co2=135; from=05/08/2010; withdrawn=05/03/2011", "Full-year charge 2,880, car unavailable for 121 days, fuel withdrawn for the last 31", "N=16; Q=121; W=31; X=152; Y=1200.00; fuel=1680", "EIM25610: 1,684 of a leap year", ExampleKind::Shifted},
    {"F5", "car", "fuel=P; co2=155; withdrawn=31/01/2011; reinstated=1", "Fuel withdrawn and reinstated in the year: no reduction", "X=0; fuel=3600", "EIM25570"},
    {"F6", "car", "fuel=P; co2=75", "Lowest percentage, 5%", "N=5; V=900.00; fuel=900", "EIM25580"},
    {"F6a", "car", "fuel=P; co2=230", "Highest percentage, 35%", "N=35; V=6300.00; fuel=6300", "EIM25580"},
    {"F7", "car", "fuel=P; co2=155; to=28/02/2011; withdrawn=31/01/2011", "Car given back on 28 February, fuel withdrawn on 31 January: no day counts twice", "Q=36; W=28; X=64; fuel=2968", "HMRC, car fuel value"},

    // Vans
    {"V1", "van", "fuel=1", "One van with fuel for the whole year", "M=3000.00; X=550.00", "EIM22790, EIM22915"},
    {"V2", "van", "charge=2318; L=1000", "Charge 2,318, payments 1,000", "M=1318.00", "EIM22876"},
    {"V2a", "van", "charge=773; L=1000", "Charge 773, payments 1,000: nothing, and nothing over for another van", "M=0.00", "EIM22876"},
    {"V3", "van", "to=31/12/2010; H=30; fuel=1; withdrawn=30/11/2010", "Available to 31 December, shared 30%, fuel withdrawn on 30 November", "B=95; F=781.00; G=2219.00; J=666.00; K=1553.00; R=31; S=126; T=190.00; V=360.00; W=108.00; X=252.00", "EIM22980: 2007/08, a leap year, fuel 500", ExampleKind::Shifted},
    {"V4", "van", "fuel=1; L=1000", "Payments of 1,000 for private use: they leave the fuel charge as it is", "M=2000.00; X=550.00", "EIM22980"},

    // Loans
    {"L1", "loan", "A=9500; B=10100; rate=4; paid=100", "9,500 at the beginning, 10,100 at the end, 4%, interest paid 100", "interest=392.00; charge=292.00", "EIM26312"},
    {"L2", "loan", "A=15300; B=14085; rate=6; paid=443.25; from=01/07/2010", "15,300 lent on 1 July, 14,085 at the end, 6%, interest paid 443.25", "E=9; interest=661.16; charge=217.91", "EIM26311"},
    {"L3", "loan", "A=20000; B=16000; rate=4.83; to=20/08/2010", "20,000 at the beginning, 16,000 repaid on 20 August, 4.83%", "E=4; interest=289.00", "EIM26221", ExampleKind::Direct, "E=4; interest=289.80", "The manual leaves the pence away here, and keeps them in its other examples; they are kept."},
    {"L3a", "loan", "A=20000; B=16000; rate=4; to=20/08/2010", "The same loan at 4%", "E=4; interest=240.00", "EIM26221: 4.83%", ExampleKind::Shifted},
    {"L4", "loan", "A=12000; B=12000; rate=4; from=06/07/2010", "12,000 lent on 6 July: nine whole tax months", "E=9; interest=360.00", "EIM26215"},
    {"L4a", "loan", "A=12000; B=12000; rate=4; from=07/07/2010", "Lent a day later: eight whole tax months", "E=8; interest=320.00", "EIM26215"},

    // Living accommodation
    {"A1", "accommodation", "B=1000; D=1250; F=175000; M=1250; N=1000", "Cost 175,000, annual value 1,000, rent of the employee 1,250", "E=0.00; P=250.00; Q=3750.00; R=3750.00", "HMRC, Expenses and benefits: accommodation; ITEPA s.105(5)", ExampleKind::Direct, "E=1000.00; P=250.00; Q=3750.00; R=4750.00", "With more made good than the greater value the basic charge stays at that value. Enter no more than it: the next line."},
    {"A1a", "accommodation", "B=1000; D=1000; F=175000; M=1250; N=1000", "The same with 1,000 of the rent entered as made good", "E=0.00; P=250.00; Q=3750.00; R=3750.00", "HMRC, Expenses and benefits: accommodation"},
    {"A2", "accommodation", "F=400000", "Flat that cost 400,000", "K=13000.00; Q=13000.00", "ACCA, technical page 2011"},
    {"A3", "accommodation", "A=5000; B=6000; D=6000", "Rent paid 5,000, annual value 6,000, made good 6,000: the greater value less what was made good", "C=6000.00; E=0.00", "ITEPA s.105"},

    // Mileage
    {"M1", "mileage", "A=2200; miles=5000", "5,000 miles at 44p", "J=2000.00; Q=200.00", "EIM31355, example 1"},
    {"M2", "mileage", "A=4200; miles=12000", "12,000 miles at 35p", "J=4500.00; Q=0.00", "EIM31355, example 3"},
    {"M3", "mileage", "A=5320; miles=14000", "14,000 miles at 38p", "J=5000.00; Q=320.00", "Student notes, not official"},
    {"M4", "mileage", "K=6; L=200", "100 miles with two passengers at 3p: the shortfall counts nothing", "M=10.00; Q=0.00", "EIM31415"},

    // Relocation and Class 1A contributions
    {"R1", "relocation", "A=9000", "Expenses of 9,000 for a move", "E=8000.00; F=1000.00", "EIM03103, ITEPA s.287"},
    {"N1", "contributions", "A=156500", "Benefits of 60,000, 75,000, 12,500 and 9,000", "C=20032.00", "NIM15030"},

    // Where the rules of this edition differ from the authority's
    {"D1", "car", "fuel=P; co2=78; price=15000", "Petrol, 78 g/km, price 15,000", "N=10; charge=1500.00", "EIM24605", ExampleKind::Direct, "N=5; charge=750.00", "The figure is rounded down to a multiple of five before it is held to the limit of 75 g/km."},
    {"D2", "car", "registered=31/12/1997; fuel=E; engine=1600; price=15000", "Letter E, registered before 1998, 1,600 cc, price 15,000", "N=22; charge=3300.00", "EIM24975", ExampleKind::Direct, "N=0; charge=0.00", "Letters B and E have no percentage for a car of that age."},
    {"D3", "car", "fuel=B; noco2=1; engine=1600; price=15000", "Letter B, registered from 1998, no CO2 figure, 1,600 cc, price 15,000", "N=23; charge=3450.00; fuel=4140", "EIM24950, EIM24725", ExampleKind::Direct, "N=-2; charge=0.00; fuel=-360", "Letter B has no percentage by the size of the engine, and its reduction is taken off nothing."},
    {"D4", "car", "fuel=P; co2=155; from=01/10/2010; withdrawn=05/04/2011", "Petrol, 155 g/km, available from 1 October, fuel withdrawn on 5 April", "Q=178; X=178; fuel=1844", "EIM25565", ExampleKind::Direct, "Q=178; X=0; fuel=3600", "With fuel withdrawn on the last day of the year the days without the car are not taken off. Leave that date empty."},
    {"D5", "accommodation", "F=100000; days=183", "Cost 100,000, provided for 183 days", "K=1000.00; L=501.37", "ITEPA s.106: 365 days", ExampleKind::Direct, "K=1000.00; L=500.00", "The days are divided by 366."},
    {"D6", "label", "", "The rate that the working paper of living accommodation names beside its figure", "rate=4", "EIM26104", ExampleKind::Direct, "rate=5", "The words of the paper are of an older year; the figure is worked out at 4%."},
    {"D7", "car", "fuel=P; co2=119; price=15000; private=100.50", "Petrol, 119 g/km, price 15,000, payments for private use 100.50", "U=1399.00; charge=1399.00", "HMRC, P11D WS2, box S: ignore decimals", ExampleKind::Direct, "U=1399.50; charge=1399.50", "The pence of the payments are kept."},
    {"D8", "loan", "A=4000; B=4000; rate=4", "A loan of 4,000, the employee's only one", "charge=0.00", "ITEPA s.180: no more than 5,000", ExampleKind::Direct, "charge=160.00", "Small loans are not looked for: leave them out yourself."},
});
// clang-format on

} // namespace quillmere::edition
