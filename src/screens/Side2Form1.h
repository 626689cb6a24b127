#pragma once

#include "screens/P11DPage.h"

namespace quillmere {

/// Page 2: the second side of the form P11D for one employee, with sections G to O.
class Side2Form1 : public P11DPage {
public:
    explicit Side2Form1(Session& session);

    bool Load() override;
    void Activate() override;
    void Unload() override;

private:
    void LeaveLoanInterest(Box& interest);
    void LeaveLoanDate(Box& date);
    void LeaveLoanDischarge(int loan);
};

} // namespace quillmere
