#pragma once

#include <quillet/quillet.h>

// The dialog: ends with IDOK when the work is to stop.
class StopController : public UIController {
    // UIController:
    void OnInit() override
    {
        ListenClickEvent(GetControl(L"stop"), [this] { OnCloseX(IDOK); });
        ListenClickEvent(GetControl(L"continue"), [this] { OnCloseX(IDCANCEL); });
    }
};
