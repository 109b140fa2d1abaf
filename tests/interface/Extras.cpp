#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CShadowUIOperations()
{
    return {
        OPERATION(CShadowUI, CShadowUI, ShowShadow, void(bool)),
        OPERATION(CShadowUI, CShadowUI, IsShowShadow, bool() const),
        OPERATION(CShadowUI, CShadowUI, DisableShadow, void(bool)),
        OPERATION(CShadowUI, CShadowUI, IsDisableShadow, bool() const),
        OPERATION(CShadowUI, CShadowUI, SetSize, bool(int)),
        OPERATION(CShadowUI, CShadowUI, SetSharpness, bool(unsigned int)),
        OPERATION(CShadowUI, CShadowUI, SetDarkness, bool(unsigned int)),
        OPERATION(CShadowUI, CShadowUI, SetPosition, bool(int, int)),
        OPERATION(CShadowUI, CShadowUI, SetColor, bool(COLORREF)),
        OPERATION(CShadowUI, CShadowUI, SetImage, bool(LPCTSTR)),
        OPERATION(CShadowUI, CShadowUI, SetShadowCorner, bool(RECT)),
        OPERATION(CShadowUI, CShadowUI, CopyShadow, bool(CShadowUI*)),
        OPERATION(CShadowUI, CShadowUI, Create, void(CPaintManagerUI*)),
        OPERATION(CShadowUI, CShadowUI, GetSize, int() const),
        OPERATION(CShadowUI, CShadowUI, GetSharpness, unsigned int() const),
        OPERATION(CShadowUI, CShadowUI, GetDarkness, unsigned int() const),
        OPERATION(CShadowUI, CShadowUI, GetPosition, POINT() const),
        OPERATION(CShadowUI, CShadowUI, GetColor, COLORREF() const),
        OPERATION(CShadowUI, CShadowUI, GetImage, LPCTSTR() const),
        OPERATION(CShadowUI, CShadowUI, GetShadowCorner, RECT() const),
        OPERATION(CShadowUI, CShadowUI, GetManager, CPaintManagerUI * () const),
    };
}

std::vector<Declaration> CTrayIconOperations()
{
    return {
        OPERATION(CTrayIcon, CTrayIcon, CreateTrayIcon, void(HWND, UINT, LPCTSTR, UINT)),
        OPERATION(CTrayIcon, CTrayIcon, DeleteTrayIcon, void()),
    };
}

// What may be left out of a call.
static_assert(requires(CShadowUI & it) { it.SetSize(); });
static_assert(requires(CShadowUI & it) { it.SetSharpness(); });
static_assert(requires(CShadowUI & it) { it.SetDarkness(); });
static_assert(requires(CShadowUI & it) { it.SetPosition(); });
static_assert(requires(CShadowUI & it, int a0) { it.SetPosition(a0); });
static_assert(requires(CShadowUI & it) { it.SetColor(); });
static_assert(requires(CTrayIcon & it, HWND a0, UINT a1) { it.CreateTrayIcon(a0, a1); });
static_assert(requires(CTrayIcon & it, HWND a0, UINT a1, LPCTSTR a2) {
    it.CreateTrayIcon(a0, a1, a2);
});

} // namespace

namespace interface_test {

std::vector<Declaration> Extras()
{
    return Join({CShadowUIOperations(), CTrayIconOperations()});
}

} // namespace interface_test
