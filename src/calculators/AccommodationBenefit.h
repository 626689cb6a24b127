#pragma once

#include "edition/AccommodationRates.h"
#include "frame/Amount.h"

#include <string>
#include <string_view>

/// The basic and the additional charge for living accommodation. ITEPA 2003 s.105 and s.106.
namespace quillmere {

/// The entered boxes of the basic charge.
struct BasicChargeFacts {
    std::string BasicChargeA; ///< rent paid
    std::string BasicChargeB; ///< annual value
    std::string BasicChargeD; ///< made good
};

/// The boxes A to E. With A and B both empty nothing is worked out, and C, D and E are emptied.
struct BasicChargeWorking {
    bool computed = false;
    Amount A, B, C, D;
    Amount E; ///< cash equivalent of the basic charge, never negative
};

/// Works out the basic charge (recalculation of `DNotepad`).
BasicChargeWorking BasicCharge(const BasicChargeFacts& facts);

/// The entered boxes of the additional charge.
struct AdditionalChargeFacts {
    std::string FBox;          ///< cost
    std::string GBox;          ///< payments towards it
    std::string AddChargeDays; ///< empty or 0: provided throughout the year
    std::string MBox;          ///< rent paid
    std::string NBox;          ///< rent already in the basic charge
    std::string EBox;          ///< the basic charge
};

/// The boxes F to R. With F and G both empty nothing is worked out, and every computed box is emptied.
struct AdditionalChargeWorking {
    bool computed = false;
    Amount F, G, H, J, K;
    int days = 0;
    Amount L;
    Amount M; ///< as entered; cut to 0 if it is below N
    Amount N, P;
    Amount Q; ///< additional charge, never negative
    Amount E;
    Amount R; ///< Q + E
};

/// Works out the additional charge (recalculation of `D2Notepad`). A net cost H below the limit leaves J to R at 0
/// except for the entered boxes; one of exactly the limit is worked through.
AdditionalChargeWorking AdditionalCharge(const AdditionalChargeFacts& facts,
                                         const edition::AccommodationRates& rates = edition::Accommodation);

/// True if the cost in `FBox` lies below the limit, an empty box included; the message is then due and the value stays.
bool IsCostTooLow(std::string_view text);

/// True if the days in `AddChargeDays` are more than can be entered; the message is then due and the box is emptied.
bool AreDaysOutOfRange(std::string_view text);

/// What box `DCashEqu` of the page reads: basic and additional charge together, blank for nought.
std::string AccommodationTotalText(std::string_view basicChargeE, std::string_view storedAddChargeQ);

} // namespace quillmere
