#include "Core/WindowAttributes.h"

#include "Control/UIShadow.h"
#include "Core/UIManager.h"
#include "Utils/DPI.h"
#include "win32/AttributeTable.h"
#include "win32/TextParse.h"

#include <algorithm>

namespace DuiLib {

namespace {

using namespace Quillet;
using namespace Quillet::Text;

BYTE ToOpacity(LPCTSTR value)
{
    return static_cast<BYTE>(std::clamp(ToInt(value), 0, 255));
}

void ApplyOpacity(CPaintManagerUI& manager, LPCTSTR value)
{
    manager.SetOpacity(ToOpacity(value));
}

void ApplyLayered(CPaintManagerUI& manager, LPCTSTR value)
{
    manager.SetLayered(IsTrue(value));
}

constexpr auto kWindowAttributes = MakeAttributeTable<NameMatch::NoCase, CPaintManagerUI>({
    {L"alpha", AttributeKind::Number, &ApplyOpacity},
    {L"bktrans", AttributeKind::Boolean, &ApplyLayered},
    {L"caption", AttributeKind::Rectangle,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         RECT caption = ToRect(value);
         manager.SetCaptionRect(caption);
     }},
    {L"defaultfontcolor", AttributeKind::Colour,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.SetDefaultFontColor(ToColour(value)); }},
    {L"disabledfontcolor", AttributeKind::Colour,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.SetDefaultDisabledColor(ToColour(value));
     }},
    {L"gdiplustext", AttributeKind::Boolean,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.SetUseGdiplusText(IsTrue(value)); }},
    {L"layered", AttributeKind::Boolean, &ApplyLayered},
    {L"layeredimage", AttributeKind::Image,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.SetLayered(true);
         manager.SetLayeredImage(value);
     }},
    {L"layeredinset", AttributeKind::Rectangle,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         RECT inset = ToRect(value);
         manager.SetLayeredInset(inset);
     }},
    {L"layeredopacity", AttributeKind::Number,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.SetLayeredOpacity(ToOpacity(value)); }},
    {L"linkfontcolor", AttributeKind::Colour,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.SetDefaultLinkFontColor(ToColour(value));
     }},
    {L"linkhoverfontcolor", AttributeKind::Colour,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.SetDefaultLinkHoverFontColor(ToColour(value));
     }},
    {L"maxinfo", AttributeKind::Size,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         const SIZE size = ToSize(value);
         manager.SetMaxInfo(size.cx, size.cy);
     }},
    {L"mininfo", AttributeKind::Size,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         const SIZE size = ToSize(value);
         manager.SetMinInfo(size.cx, size.cy);
     }},
    {L"noactivate", AttributeKind::Boolean,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.SetNoActivate(IsTrue(value)); }},
    {L"opacity", AttributeKind::Number, &ApplyOpacity},
    {L"roundcorner", AttributeKind::Size,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         const SIZE size = ToSize(value);
         manager.SetRoundCorner(size.cx, size.cy);
     }},
    {L"selectedcolor", AttributeKind::Colour,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.SetDefaultSelectedBkColor(ToColour(value));
     }},
    {L"shadowcolor", AttributeKind::Colour,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         // The alpha of the colour has no meaning here.
         const DWORD color = ToColour(value);
         manager.GetShadow()->SetColor(
             RGB((color >> 16) & 0xFF, (color >> 8) & 0xFF, color & 0xFF));
     }},
    {L"shadowcorner", AttributeKind::Rectangle,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.GetShadow()->SetShadowCorner(ToRect(value));
     }},
    {L"shadowdarkness", AttributeKind::Number,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.GetShadow()->SetDarkness(static_cast<unsigned int>(ToInt(value)));
     }},
    {L"shadowimage", AttributeKind::Image,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.GetShadow()->SetImage(value); }},
    {L"shadowposition", AttributeKind::Size,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         const SIZE position = ToSize(value);
         manager.GetShadow()->SetPosition(position.cx, position.cy);
     }},
    {L"shadowsharpness", AttributeKind::Number,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.GetShadow()->SetSharpness(static_cast<unsigned int>(ToInt(value)));
     }},
    {L"shadowsize", AttributeKind::Number,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.GetShadow()->SetSize(ToInt(value)); }},
    {L"showshadow", AttributeKind::Boolean,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.GetShadow()->ShowShadow(IsTrue(value));
     }},
    {L"showdirty", AttributeKind::Boolean,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.SetShowUpdateRect(IsTrue(value)); }},
    {L"size", AttributeKind::Size,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         const SIZE size = manager.GetDPIObj()->Scale(ToSize(value));
         manager.SetInitSize(size.cx, size.cy);
     }},
    {L"sizebox", AttributeKind::Rectangle,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         RECT box = ToRect(value);
         manager.SetSizeBox(box);
     }},
    {L"textrenderinghint", AttributeKind::Number,
     [](CPaintManagerUI& manager, LPCTSTR value) {
         manager.SetGdiplusTextRenderingHint(ToInt(value));
     }},
    {L"tooltiphovertime", AttributeKind::Number,
     [](CPaintManagerUI& manager, LPCTSTR value) { manager.SetHoverTime(ToInt(value)); }},
});

} // namespace

void ApplyWindowAttribute(CPaintManagerUI& manager, LPCTSTR name, LPCTSTR value)
{
    if (!kWindowAttributes.Apply(manager, name, value))
        manager.AddWindowCustomAttribute(name, value);
}

} // namespace DuiLib
