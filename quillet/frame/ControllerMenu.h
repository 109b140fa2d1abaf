#pragma once

#include <UIlib.h>

namespace Quillet {

// A menu that a controller opened. Menus end on their own, so a controller asks before it touches
// the one that it remembers.
class ControllerMenu : public DuiLib::CMenuWnd {
public:
    ControllerMenu();
    ~ControllerMenu() override;

    static bool IsOpen(const DuiLib::CMenuWnd* menu);
};

} // namespace Quillet
