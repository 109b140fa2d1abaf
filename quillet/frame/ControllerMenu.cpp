#include "quillet/frame/ControllerMenu.h"

#include <unordered_set>

namespace Quillet {

namespace {

// Outlives every menu.
std::unordered_set<const DuiLib::CMenuWnd*>& OpenMenus()
{
    static auto& menus = *new std::unordered_set<const DuiLib::CMenuWnd*>;
    return menus;
}

} // namespace

ControllerMenu::ControllerMenu()
{
    OpenMenus().insert(this);
}

ControllerMenu::~ControllerMenu()
{
    OpenMenus().erase(this);
}

bool ControllerMenu::IsOpen(const DuiLib::CMenuWnd* menu)
{
    return OpenMenus().contains(menu);
}

} // namespace Quillet
