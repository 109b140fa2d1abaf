#include <UIlib.h>

#include <gtest/gtest.h>

using namespace DuiLib;

namespace {

void ExpectRect(const RECT& rect, int left, int top, int right, int bottom)
{
    EXPECT_EQ(rect.left, left);
    EXPECT_EQ(rect.top, top);
    EXPECT_EQ(rect.right, right);
    EXPECT_EQ(rect.bottom, bottom);
}

} // namespace

TEST(RectTest, PointsReadSignedMouseCoordinates)
{
    const CDuiPoint point(MAKELPARAM(-3, -40));
    EXPECT_EQ(point.x, -3);
    EXPECT_EQ(point.y, -40);
    const CDuiPoint zero;
    EXPECT_EQ(zero.x, 0);
    EXPECT_EQ(zero.y, 0);
}

TEST(RectTest, SizesComeFromRectangles)
{
    const CDuiSize size(RECT{10, 20, 35, 60});
    EXPECT_EQ(size.cx, 25);
    EXPECT_EQ(size.cy, 40);
    const SIZE plain = size;
    EXPECT_EQ(plain.cx, 25);
}

TEST(RectTest, AddsNoDataToThePlatformStructures)
{
    static_assert(sizeof(CDuiPoint) == sizeof(POINT));
    static_assert(sizeof(CDuiSize) == sizeof(SIZE));
    static_assert(sizeof(CDuiRect) == sizeof(RECT));
    const POINT point = CDuiPoint(1, 2);
    EXPECT_EQ(point.y, 2);
}

TEST(RectTest, KnowsItsSizeAndWhenItIsNull)
{
    CDuiRect rect(10, 20, 40, 60);
    EXPECT_EQ(rect.GetWidth(), 30);
    EXPECT_EQ(rect.GetHeight(), 40);
    EXPECT_FALSE(rect.IsNull());
    EXPECT_FALSE(CDuiRect(5, 5, 5, 5).IsNull());
    rect.Empty();
    EXPECT_TRUE(rect.IsNull());
    EXPECT_TRUE(CDuiRect().IsNull());
}

TEST(RectTest, JoinTakesEmptyRectanglesWithTheirPosition)
{
    CDuiRect rect(10, 10, 20, 20);
    rect.Join({5, 15, 12, 40});
    ExpectRect(rect, 5, 10, 20, 40);
    rect.Join({0, 0, 0, 0});
    ExpectRect(rect, 0, 0, 20, 40);
}

TEST(RectTest, UnionLeavesEmptyRectanglesOut)
{
    CDuiRect rect(10, 10, 20, 20);
    CDuiRect empty;
    rect.Union(empty);
    ExpectRect(rect, 10, 10, 20, 20);
    CDuiRect other(0, 15, 12, 30);
    rect.Union(other);
    ExpectRect(rect, 0, 10, 20, 30);
}

TEST(RectTest, MovesAndResizes)
{
    CDuiRect rect(10, 20, 30, 40);
    rect.Offset(-5, 5);
    ExpectRect(rect, 5, 25, 25, 45);
    rect.Inflate(1, 2);
    ExpectRect(rect, 4, 23, 26, 47);
    rect.Deflate(2, 1);
    ExpectRect(rect, 6, 24, 24, 46);
    rect.ResetOffset();
    ExpectRect(rect, 0, 0, 18, 22);
}

TEST(RectTest, NormalizeSwapsReversedEdges)
{
    CDuiRect rect(30, 40, 10, 20);
    rect.Normalize();
    ExpectRect(rect, 10, 20, 30, 40);
    rect.Normalize();
    ExpectRect(rect, 10, 20, 30, 40);
}

TEST(RectTest, ResourceNamesKeepTextsAndNumbers)
{
    const CDuiString name(L"skin.xml");
    EXPECT_EQ(STRINGorID(name).m_lpstr, name.GetData());
    EXPECT_TRUE(IS_INTRESOURCE(STRINGorID(104u).m_lpstr));
    EXPECT_EQ(STRINGorID(104u).m_lpstr, MAKEINTRESOURCE(104));
    EXPECT_FALSE(IS_INTRESOURCE(STRINGorID(L"104").m_lpstr));
}

TEST(RectTest, VariantsReleaseWhatTheyHold)
{
    const CDuiVariant number(7);
    EXPECT_EQ(number.vt, VT_I4);
    EXPECT_EQ(number.intVal, 7);

    wchar_t text[] = L"text";
    CDuiVariant string(text);
    const CDuiVariant copy(string);
    text[0] = L'x';
    EXPECT_STREQ(string.bstrVal, L"text");
    EXPECT_STREQ(copy.bstrVal, L"text");
    EXPECT_NE(copy.bstrVal, string.bstrVal);
    string = number;
    EXPECT_EQ(string.vt, VT_I4);
}
