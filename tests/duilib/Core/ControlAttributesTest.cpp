#include "duilib/Core/ControlKit.h"
#include "support/ObjectCounters.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace DuiLib;
using test::ControlHost;
using test::Place;

namespace {

class OpenControl : public CControlUI {
public:
    using CControlUI::m_nBorderSize;
    using CControlUI::m_rcBorderSize;
    using CControlUI::m_sBkImage;
    using CControlUI::m_sForeImage;
};

struct Row {
    const wchar_t* name;
    const wchar_t* value;
    bool (*holds)(OpenControl& control);
};

bool Is(LPCTSTR text, LPCTSTR expected)
{
    return std::wstring(text) == expected;
}

const Row kRows[] = {
    {L"name", L"n", [](OpenControl& c) { return Is(c.GetName(), L"n"); }},
    {L"text", L"a{\\n}b", [](OpenControl& c) { return Is(c.GetText(), L"a\nb"); }},
    {L"tooltip", L"a<n>b", [](OpenControl& c) { return Is(c.GetToolTip(), L"a\r\nb"); }},
    {L"userdata", L"u", [](OpenControl& c) { return Is(c.GetUserData(), L"u"); }},
    {L"virtualwnd", L"v", [](OpenControl& c) { return Is(c.GetVirtualWnd(), L"v"); }},
    {L"pos", L"10,20,40,25",
     [](OpenControl& c) {
         return c.GetFixedXY().cx == 10 && c.GetFixedXY().cy == 20 && c.GetFixedWidth() == 30 &&
                c.GetFixedHeight() == 5;
     }},
    {L"pos", L"-40,-25,-10,-20",
     [](OpenControl& c) {
         return c.GetFixedXY().cx == -10 && c.GetFixedXY().cy == -20 && c.GetFixedWidth() == 30 &&
                c.GetFixedHeight() == 5;
     }},
    {L"width", L"12", [](OpenControl& c) { return c.GetFixedWidth() == 12; }},
    {L"height", L"13", [](OpenControl& c) { return c.GetFixedHeight() == 13; }},
    {L"minwidth", L"14", [](OpenControl& c) { return c.GetMinWidth() == 14; }},
    {L"minheight", L"15", [](OpenControl& c) { return c.GetMinHeight() == 15; }},
    {L"maxwidth", L"16", [](OpenControl& c) { return c.GetMaxWidth() == 16; }},
    {L"maxheight", L"17", [](OpenControl& c) { return c.GetMaxHeight() == 17; }},
    {L"padding", L"1,2,3,4",
     [](OpenControl& c) { return Place(c.GetPadding()) == Place(1, 2, 3, 4); }},
    {L"float", L"true", [](OpenControl& c) { return c.IsFloat(); }},
    {L"float", L"0.25,0,0.75,1",
     [](OpenControl& c) {
         const TPercentInfo percent = c.GetFloatPercent();
         return c.IsFloat() && percent.left == 0.25 && percent.top == 0 && percent.right == 0.75 &&
                percent.bottom == 1;
     }},
    {L"floatalign", L"center,bottom",
     [](OpenControl& c) { return c.GetFloatAlign() == (DT_CENTER | DT_BOTTOM); }},
    {L"floatalign", L"right vcenter",
     [](OpenControl& c) { return c.GetFloatAlign() == (DT_RIGHT | DT_VCENTER); }},
    {L"floatalign", L"right,left,bottom,top",
     [](OpenControl& c) { return c.GetFloatAlign() == (DT_LEFT | DT_TOP); }},
    {L"floatalign", L"right,null", [](OpenControl& c) { return c.GetFloatAlign() == 0; }},
    {L"bkcolor", L"#FF102030", [](OpenControl& c) { return c.GetBkColor() == 0xFF102030; }},
    {L"bkcolor", L"  #FF102030", [](OpenControl& c) { return c.GetBkColor() == 0xFF102030; }},
    {L"bkcolor", L"102030", [](OpenControl& c) { return c.GetBkColor() == 0x00102030; }},
    {L"bkcolor1", L"#FF102031", [](OpenControl& c) { return c.GetBkColor() == 0xFF102031; }},
    {L"bkcolor2", L"#FF102032", [](OpenControl& c) { return c.GetBkColor2() == 0xFF102032; }},
    {L"bkcolor3", L"#FF102033", [](OpenControl& c) { return c.GetBkColor3() == 0xFF102033; }},
    {L"forecolor", L"#80102034", [](OpenControl& c) { return c.GetForeColor() == 0x80102034; }},
    {L"bordercolor", L"#FF102035", [](OpenControl& c) { return c.GetBorderColor() == 0xFF102035; }},
    {L"focusbordercolor", L"#FF102036",
     [](OpenControl& c) { return c.GetFocusBorderColor() == 0xFF102036; }},
    {L"colorhsl", L"TRUE", [](OpenControl& c) { return c.IsColorHSL(); }},
    {L"gradient", L"hor", [](OpenControl& c) { return Is(c.GetGradient(), L"hor"); }},
    {L"bordersize", L"3", [](OpenControl& c) { return c.GetBorderSize() == 3; }},
    {L"bordersize", L"1,2,3,4",
     [](OpenControl& c) {
         return c.GetBorderSize() == 0 && Place(c.GetBorderRectSize()) == Place(1, 2, 3, 4);
     }},
    {L"leftbordersize", L"5", [](OpenControl& c) { return c.GetLeftBorderSize() == 5; }},
    {L"topbordersize", L"6", [](OpenControl& c) { return c.GetTopBorderSize() == 6; }},
    {L"rightbordersize", L"7", [](OpenControl& c) { return c.GetRightBorderSize() == 7; }},
    {L"bottombordersize", L"8", [](OpenControl& c) { return c.GetBottomBorderSize() == 8; }},
    {L"borderstyle", L"2", [](OpenControl& c) { return c.GetBorderStyle() == PS_DOT; }},
    {L"borderround", L"4,6",
     [](OpenControl& c) { return c.GetBorderRound().cx == 4 && c.GetBorderRound().cy == 6; }},
    {L"bkimage", L"b.png", [](OpenControl& c) { return Is(c.m_sBkImage, L"b.png"); }},
    {L"foreimage", L"f.png", [](OpenControl& c) { return Is(c.m_sForeImage, L"f.png"); }},
    {L"enabled", L"false", [](OpenControl& c) { return !c.IsEnabled(); }},
    {L"enabled", L"yes", [](OpenControl& c) { return !c.IsEnabled(); }},
    {L"mouse", L"false", [](OpenControl& c) { return !c.IsMouseEnabled(); }},
    {L"keyboard", L"false", [](OpenControl& c) { return !c.IsKeyboardEnabled(); }},
    {L"visible", L"false", [](OpenControl& c) { return !c.IsVisible(); }},
    {L"menu", L"true", [](OpenControl& c) { return c.IsContextMenuUsed(); }},
    {L"drag", L"true", [](OpenControl& c) { return c.IsDragEnabled(); }},
    {L"drop", L"true", [](OpenControl& c) { return c.IsDropEnabled(); }},
    {L"resourcetext", L"true", [](OpenControl& c) { return c.IsResourceText(); }},
    {L"richevent", L"true", [](OpenControl& c) { return c.IsRichEvent(); }},
    {L"shortcut", L"xyz", [](OpenControl& c) { return c.GetShortcut() == L'x'; }},
};

} // namespace

TEST(ControlAttributesTest, EachAttributeHasItsEffect)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.name << L"=" << row.value);
        OpenControl control;
        EXPECT_FALSE(row.holds(control) && std::wstring(row.name) != L"floatalign");
        control.SetAttribute(row.name, row.value);
        EXPECT_TRUE(row.holds(control));
        EXPECT_EQ(control.GetCustomAttribute(row.name), nullptr);
    }
}

TEST(ControlAttributesTest, NamesAreKnownInAnyCase)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.name << L"=" << row.value);
        std::wstring name = row.name;
        for (wchar_t& ch : name)
            ch = static_cast<wchar_t>(::towupper(ch));
        OpenControl control;
        control.SetAttribute(name.c_str(), row.value);
        EXPECT_TRUE(row.holds(control));
    }
}

TEST(ControlAttributesTest, EachCursorHasItsName)
{
    const struct {
        const wchar_t* name;
        WORD cursor;
    } rows[] = {
        {L"arrow", DUI_ARROW},   {L"ibeam", DUI_IBEAM},       {L"wait", DUI_WAIT},
        {L"cross", DUI_CROSS},   {L"uparrow", DUI_UPARROW},   {L"size", DUI_SIZE},
        {L"icon", DUI_ICON},     {L"sizenwse", DUI_SIZENWSE}, {L"sizenesw", DUI_SIZENESW},
        {L"sizewe", DUI_SIZEWE}, {L"sizens", DUI_SIZENS},     {L"sizeall", DUI_SIZEALL},
        {L"no", DUI_NO},         {L"hand", DUI_HAND},
    };
    CControlUI control;
    for (const auto& row : rows) {
        control.SetAttribute(L"cursor", row.name);
        EXPECT_EQ(control.GetCursor(), row.cursor) << row.name;
    }
    control.SetAttribute(L"cursor", L"unheard-of");
    EXPECT_EQ(control.GetCursor(), DUI_HAND);
}

TEST(ControlAttributesTest, OneBorderWidthClearsTheFour)
{
    OpenControl control;
    control.SetAttribute(L"bordersize", L"1,2,3,4");
    control.SetAttribute(L"bordersize", L"5");
    EXPECT_EQ(control.m_nBorderSize, 5);
    EXPECT_EQ(Place(control.m_rcBorderSize), Place(0, 0, 0, 0));
}

TEST(ControlAttributesTest, AbsurdNumbersAreClamped)
{
    CControlUI control;
    control.SetAttribute(L"width", L"99999999999");
    control.SetAttribute(L"minheight", L"2147483648");
    control.SetAttribute(L"padding", L"-2147483648,2147483647,nan,inf");
    control.SetAttribute(L"pos", L"-2147483648,-2147483648,2147483647,2147483647");
    control.SetAttribute(L"float", L"nan,inf,-inf,1e300");
    EXPECT_LE(control.GetFixedWidth(), 1'000'000);
    EXPECT_EQ(control.GetMinHeight(), 1'000'000);
    EXPECT_EQ(Place(control.GetPadding()), Place(-1'000'000, 1'000'000, 0, 0));
    const TPercentInfo percent = control.GetFloatPercent();
    for (const double fraction : {percent.left, percent.top, percent.right, percent.bottom})
        EXPECT_LE(std::abs(fraction), 1000.0);
}

TEST(ControlAttributesTest, WhatNobodyKnowsIsKeptAndTheFirstValueStays)
{
    CControlUI control;
    control.SetAttribute(L"mine", L"1");
    control.SetAttribute(L"mine", L"2");
    control.SetAttribute(L"Mine", L"3");
    EXPECT_STREQ(control.GetCustomAttribute(L"mine"), L"1");
    EXPECT_STREQ(control.GetCustomAttribute(L"Mine"), L"3");
    EXPECT_EQ(control.GetCustomAttribute(L"other"), nullptr);
    EXPECT_TRUE(control.RemoveCustomAttribute(L"mine"));
    EXPECT_FALSE(control.RemoveCustomAttribute(L"mine"));
    EXPECT_EQ(control.GetCustomAttribute(L"mine"), nullptr);
    control.RemoveAllCustomAttribute();
    EXPECT_EQ(control.GetCustomAttribute(L"Mine"), nullptr);
}

TEST(ControlAttributesTest, CustomAttributesCostNothingUntilTheyAreUsed)
{
    CControlUI control;
    const int before = test::HeapBlocks();
    EXPECT_EQ(control.GetCustomAttribute(L"mine"), nullptr);
    EXPECT_FALSE(control.RemoveCustomAttribute(L"mine"));
    control.SetAttribute(L"width", L"1");
    EXPECT_EQ(test::HeapBlocks(), before);
    control.AddCustomAttribute(L"mine", L"1");
    EXPECT_GT(test::HeapBlocks(), before);
    control.RemoveAllCustomAttribute();
    EXPECT_EQ(test::HeapBlocks(), before);
}

TEST(ControlAttributesTest, NullAndEmptyNamesAndValuesAreHarmless)
{
    CControlUI control;
    control.SetAttribute(nullptr, nullptr);
    control.SetAttribute(L"", L"x");
    control.SetAttribute(L"text", nullptr);
    control.SetAttribute(L"style", nullptr);
    control.AddCustomAttribute(nullptr, L"x");
    EXPECT_EQ(control.ApplyAttributeList(nullptr), &control);
    EXPECT_EQ(control.GetCustomAttribute(nullptr), nullptr);
    EXPECT_EQ(control.GetCustomAttribute(L""), nullptr);
}

TEST(ControlAttributesTest, AListIsReadUpToItsFirstMalformedPair)
{
    const struct {
        const wchar_t* list;
        int width;
        int height;
    } rows[] = {
        {L"width=\"1\" height=\"2\"", 1, 2},
        {L"width=\"1\",height=\"2\"", 1, 2},
        {L"  width=\"1\"  ,  height=\"2\" ", 1, 2},
        {L"width=\"1\"height=\"2\"", 1, 2},
        {L"width=&quot;1&quot; height=&quot;2&quot;", 1, 2},
        {L"width=\"1\" height=2 minwidth=\"3\"", 1, 0},
        {L"width=\"1\" height=\"2", 1, 0},
        {L"width = \"1\" height=\"2\"", 0, 0},
        {L"=\"1\" height=\"2\"", 0, 0},
        {L"width", 0, 0},
        {L"", 0, 0},
        {L"width=\"\" height=\"2\"", 0, 2},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.list);
        CControlUI control;
        EXPECT_EQ(control.ApplyAttributeList(row.list), &control);
        EXPECT_EQ(control.GetFixedWidth(), row.width);
        EXPECT_EQ(control.GetFixedHeight(), row.height);
    }
}

TEST(ControlAttributesTest, ALongListIsReadWhole)
{
    const std::wstring text(5000, L'x');
    CControlUI control;
    control.ApplyAttributeList((L"text=\"" + text + L"\" width=\"7\"").c_str());
    EXPECT_EQ(control.GetText().GetLength(), 5000);
    EXPECT_EQ(control.GetFixedWidth(), 7);
}

TEST(ControlAttributesTest, ApplyingAListOfNumbersAllocatesNothing)
{
    CControlUI control;
    control.ApplyAttributeList(L"width=\"1\"");
    const int before = test::HeapBlocks();
    control.ApplyAttributeList(L"width=\"2\" height=\"3\" padding=\"1,2,3,4\" bkcolor=\"#FF0000\"");
    EXPECT_EQ(test::HeapBlocks(), before);
    EXPECT_EQ(control.GetFixedHeight(), 3);
}

TEST(ControlAttributesTest, AListMayBeTheNameOfAStyle)
{
    ControlHost host{50, 24};
    auto& control = host.Add<CControlUI>();
    host.Manager().AddStyle(L"title", L"width=\"11\" height=\"12\"");
    control.ApplyAttributeList(L"title");
    EXPECT_EQ(control.GetFixedWidth(), 11);
    EXPECT_EQ(control.GetFixedHeight(), 12);
}

TEST(ControlAttributesTest, AStyleIsAppliedByNameAndAnUnknownOneIsKept)
{
    ControlHost host{50, 24};
    auto& control = host.Add<CControlUI>();
    host.Manager().AddStyle(L"title", L"width=\"11\"");
    control.SetAttribute(L"style", L"title");
    EXPECT_EQ(control.GetFixedWidth(), 11);
    EXPECT_EQ(control.GetCustomAttribute(L"style"), nullptr);
    control.SetAttribute(L"style", L"unknown");
    EXPECT_STREQ(control.GetCustomAttribute(L"style"), L"unknown");
}

TEST(ControlAttributesTest, AnInnerStyleIsAnAttributeList)
{
    CControlUI control;
    control.SetAttribute(L"innerstyle", L"width=\"9\" text=\"t\"");
    EXPECT_EQ(control.GetFixedWidth(), 9);
    EXPECT_STREQ(control.GetText(), L"t");
}

TEST(ControlAttributesTest, AStyleThatLeadsBackToItselfEnds)
{
    ControlHost host{50, 24};
    auto& control = host.Add<CControlUI>();
    host.Manager().AddStyle(L"a", L"style=\"b\" width=\"1\"");
    host.Manager().AddStyle(L"b", L"style=\"a\" height=\"2\"");
    control.SetAttribute(L"style", L"a");
    EXPECT_EQ(control.GetFixedWidth(), 1);
    EXPECT_EQ(control.GetFixedHeight(), 2);
}

TEST(ControlAttributesTest, AStyleMayBeRemovedWhileItIsApplied)
{
    class Remover : public CControlUI {
    public:
        void SetAttribute(LPCTSTR name, LPCTSTR value) override
        {
            GetManager()->RemoveAllStyle();
            CControlUI::SetAttribute(name, value);
        }
    };
    ControlHost host{50, 24};
    auto& control = host.Add<Remover>();
    host.Manager().AddStyle(L"a", L"width=\"1\" height=\"2\"");
    control.ApplyAttributeList(L"a");
    EXPECT_EQ(control.GetFixedWidth(), 1);
    EXPECT_EQ(control.GetFixedHeight(), 2);
}
