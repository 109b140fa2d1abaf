#include "win32/AttributeTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using Quillet::AttributeKind;
using Quillet::MakeAttributeTable;
using Quillet::NameMatch;

class Switch {
public:
    template <NameMatch match>
    bool SetAttribute(LPCTSTR name, LPCTSTR value)
    {
        static constexpr auto kTable = MakeAttributeTable<match, Switch>({
            {L"width", AttributeKind::Number,
             [](Switch& self, LPCTSTR text) { self.m_width = Quillet::Text::ToInt(text); }},
            {L"text", AttributeKind::Text, [](Switch& self, LPCTSTR text) { self.m_text = text; }},
            {L"BkColor", AttributeKind::Colour,
             [](Switch& self, LPCTSTR text) { self.m_colour = Quillet::Text::ToColour(text); }},
        });
        return kTable.Apply(*this, name, value);
    }

    int Width() const { return m_width; }
    const std::wstring& Text() const { return m_text; }
    DWORD Colour() const { return m_colour; }

private:
    int m_width = 0;
    std::wstring m_text = L"unset";
    DWORD m_colour = 0;
};

} // namespace

TEST(AttributeTableTest, AppliesTheRowOfTheName)
{
    Switch control;
    EXPECT_TRUE(control.SetAttribute<NameMatch::NoCase>(L"width", L"12"));
    EXPECT_TRUE(control.SetAttribute<NameMatch::NoCase>(L"bkcolor", L"#FF000000"));
    EXPECT_EQ(control.Width(), 12);
    EXPECT_EQ(control.Colour(), 0xFF000000u);
    EXPECT_EQ(control.Text(), L"unset");
}

TEST(AttributeTableTest, CaseMattersOnlyInExactTables)
{
    Switch control;
    EXPECT_TRUE(control.SetAttribute<NameMatch::NoCase>(L"WIDTH", L"3"));
    EXPECT_FALSE(control.SetAttribute<NameMatch::Exact>(L"Width", L"4"));
    EXPECT_FALSE(control.SetAttribute<NameMatch::Exact>(L"bkcolor", L"4"));
    EXPECT_EQ(control.Width(), 3);
    EXPECT_TRUE(control.SetAttribute<NameMatch::Exact>(L"width", L"4"));
    EXPECT_TRUE(control.SetAttribute<NameMatch::Exact>(L"BkColor", L"1"));
    EXPECT_EQ(control.Width(), 4);
}

TEST(AttributeTableTest, UnknownNamesAreRefused)
{
    Switch control;
    for (const wchar_t* name : {L"", L"widt", L"widths", L"height"})
        EXPECT_FALSE(control.SetAttribute<NameMatch::NoCase>(name, L"5")) << name;
    EXPECT_FALSE(control.SetAttribute<NameMatch::NoCase>(nullptr, L"5"));
    EXPECT_EQ(control.Width(), 0);
}

TEST(AttributeTableTest, ANullValueIsTheEmptyText)
{
    Switch control;
    EXPECT_TRUE(control.SetAttribute<NameMatch::NoCase>(L"text", nullptr));
    EXPECT_EQ(control.Text(), L"");
}

TEST(AttributeTableTest, ListsItsRows)
{
    static constexpr auto kTable = MakeAttributeTable<NameMatch::Exact, Switch>({
        {L"one", AttributeKind::Boolean, [](Switch&, LPCTSTR) {}},
        {L"two", AttributeKind::Choice, [](Switch&, LPCTSTR) {}},
    });
    ASSERT_EQ(kTable.Rows().size(), 2u);
    EXPECT_TRUE(std::ranges::any_of(kTable.Rows(), [](const auto& row) {
        return row.name == L"two" && row.kind == AttributeKind::Choice;
    }));
    EXPECT_NE(kTable.Find(L"one"), nullptr);
    EXPECT_EQ(kTable.Find(L"three"), nullptr);
}

TEST(AttributeTableTest, FindsEveryRowOfALargeTable)
{
    static constexpr auto kTable = MakeAttributeTable<NameMatch::NoCase, Switch>({
        {L"align", AttributeKind::Choice, nullptr},
        {L"width", AttributeKind::Number, nullptr},
        {L"height", AttributeKind::Number, nullptr},
        {L"font", AttributeKind::Number, nullptr},
        {L"name", AttributeKind::Text, nullptr},
        {L"text", AttributeKind::Text, nullptr},
        {L"inset", AttributeKind::Rectangle, nullptr},
        {L"round", AttributeKind::Size, nullptr},
        {L"bkimage", AttributeKind::Image, nullptr},
        {L"a", AttributeKind::Text, nullptr},
        {L"b", AttributeKind::Text, nullptr},
        {L"ab", AttributeKind::Text, nullptr},
        {L"ba", AttributeKind::Text, nullptr},
    });
    for (const auto& row : kTable.Rows()) {
        const auto* const found = kTable.Find(row.name);
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->name, row.name);
    }
}

TEST(AttributeTableTest, AnUnknownNameTellsEveryRow)
{
    static std::wstring told;
    told.clear();
    Quillet::onUnknownAttribute = [](const std::type_info& control, std::wstring_view name,
                                     AttributeKind kind) {
        EXPECT_TRUE(control == typeid(Switch));
        EXPECT_EQ(kind == AttributeKind::Number, name == L"width");
        told.append(name).append(L" ");
    };
    Switch control;
    EXPECT_TRUE(control.SetAttribute<NameMatch::NoCase>(L"width", L"3"));
    EXPECT_EQ(told, L"");
    EXPECT_FALSE(control.SetAttribute<NameMatch::NoCase>(L"", L""));
    Quillet::onUnknownAttribute = nullptr;
    EXPECT_FALSE(control.SetAttribute<NameMatch::NoCase>(L"", L""));

    EXPECT_EQ(std::ranges::count(told, L' '), 3);
    for (const auto* name : {L"width ", L"text ", L"BkColor "})
        EXPECT_NE(told.find(name), std::wstring::npos) << name;
}
