#pragma once

#include "clientdb/BoundScreen.h"

namespace quillmere {

/// The return of Class 1A contributions and the employer's declaration, form P11D(b), for the current employer.
class P11DDeclaration : public BoundScreen {
public:
    explicit P11DDeclaration(Session& session);

    bool Load() override;
    void Unload() override;

    /// Has the total and all that follows from it worked out anew once the windows are up.
    void StartP11DBTimer();

private:
    Sought ShowEmployer(std::string_view errorTitle);
    void P11DBTimer();
    void Close();
    void Refresh();
    void RefreshSection1();
    void RefreshSection4();
    void LeaveTotal();
    void LeaveSentDate();
    void ChangeAdjustTick();
    void OpenAdjustments();
    void PrintDeclaration();
};

} // namespace quillmere
