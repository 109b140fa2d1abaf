#include <gtest/gtest.h>

#include "quillet/drawing/DrawingKit.h"
#include "quillet/drawing/GdiplusCalls.h"
#include "quillet/quillet.h"
#include "support/ControlHost.h"
#include "support/ObjectCounters.h"

#include <cstdlib>
#include <functional>
#include <string>

namespace test {
namespace {

using namespace DuiLib;

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kYellow{0xFFFFFF00};

constexpr RECT kPlace{100, 50, 160, 100};

void ExpectNear(Argb actual, Argb expected)
{
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference = static_cast<int>(actual.value >> shift & 0xFF) -
                               static_cast<int>(expected.value >> shift & 0xFF);
        EXPECT_LE(std::abs(difference), 2) << actual << " instead of " << expected;
    }
}

// A control at (100, 50) of a white canvas.
class PainterTest : public testing::Test {
protected:
    PainterTest() { control.SetPos(kPlace, false); }

    CPaintManagerUI manager; // starts GDI+
    Canvas canvas{200, 120};
    CControlUI control;
    Picture blank = canvas.Take();
};

TEST_F(PainterTest, LinesBeginAtThePlaceOfTheControl)
{
    UIPainter painter(&control, canvas.Dc());
    painter.SetPen(kBlue.value);
    painter.DrawLine(0, 0, 10, 0);
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(105, 50), kBlue);
    EXPECT_EQ(picture.At(105, 48), kWhite);
    EXPECT_EQ(picture.At(105, 52), kWhite);
    EXPECT_EQ(picture.At(98, 50), kWhite);
    EXPECT_EQ(picture.At(112, 50), kWhite);
}

TEST_F(PainterTest, LineBetweenPointsIsTheSame)
{
    GdiplusCalls calls;
    UIPainter painter(&control, canvas.Dc());
    painter.SetPen(kBlue.value);
    calls.Take();
    painter.DrawLine(3, 4, 30, 20);
    const auto expected = calls.Take();
    painter.DrawLine(POINT{3, 4}, POINT{30, 20});
    EXPECT_EQ(calls.Take(), expected);
}

TEST_F(PainterTest, RectangleIsAnOutline)
{
    UIPainter painter(&control, canvas.Dc());
    painter.SetPen(kRed.value);
    painter.SetBrush(kBlue.value);
    painter.DrawRectange({10, 10, 30, 25});
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(110, 67), kRed);
    EXPECT_EQ(picture.At(130, 67), kRed);
    EXPECT_EQ(picture.At(120, 60), kRed);
    EXPECT_EQ(picture.At(120, 75), kRed);
    EXPECT_EQ(picture.At(120, 67), kWhite);
    EXPECT_EQ(picture.At(107, 67), kWhite);
    EXPECT_EQ(picture.At(133, 67), kWhite);
}

TEST_F(PainterTest, FillHasNoOutline)
{
    UIPainter painter(&control, canvas.Dc());
    painter.SetPen(kRed.value);
    painter.SetBrush(kBlue.value);
    painter.FillRectange({10, 10, 30, 25});
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(112, 62), kBlue);
    EXPECT_EQ(picture.At(127, 72), kBlue);
    EXPECT_EQ(picture.At(107, 67), kWhite);
    EXPECT_EQ(picture.At(132, 67), kWhite);
    EXPECT_EQ(picture.At(120, 57), kWhite);
    EXPECT_EQ(picture.At(120, 77), kWhite);
    EXPECT_EQ(picture.Count(kRed), 0);
}

TEST_F(PainterTest, TranslucentFillMixes)
{
    UIPainter painter(&control, canvas.Dc());
    painter.SetBrush(0x80FF0000);
    painter.FillRectange({0, 0, 40, 40});
    ExpectNear(canvas.Take().At(120, 70), Argb{0xFFFF7F7F});
}

TEST_F(PainterTest, ColoursAreTransparentAtFirst)
{
    UIPainter painter(&control, canvas.Dc());
    painter.DrawLine(0, 0, 50, 0);
    painter.DrawRectange({0, 0, 40, 40});
    painter.FillRectange({0, 0, 40, 40});
    EXPECT_EQ(canvas.Take(), blank);
}

TEST_F(PainterTest, PlaceOfTheControlIsReadAtEachCall)
{
    UIPainter painter(&control, canvas.Dc());
    painter.SetBrush(kBlue.value);
    painter.FillRectange({0, 0, 10, 10});
    control.SetPos({20, 80, 40, 100}, false);
    painter.FillRectange({0, 0, 10, 10});
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(105, 55), kBlue);
    EXPECT_EQ(picture.At(25, 85), kBlue);
    EXPECT_EQ(picture.At(125, 85), kWhite);
}

TEST_F(PainterTest, TranslationComesOnTopOfThePlace)
{
    UIPainter painter(&control, canvas.Dc());
    painter.SetBrush(kBlue.value);
    painter.Translate(-60, 10);
    painter.Translate(-20, 20);
    painter.FillRectange({0, 0, 10, 10});
    Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(25, 85), kBlue);
    EXPECT_EQ(picture.At(105, 55), kWhite);

    canvas.Fill(kWhite);
    painter.ResetTransform();
    painter.FillRectange({0, 0, 10, 10});
    picture = canvas.Take();
    EXPECT_EQ(picture.At(25, 85), kWhite);
    EXPECT_EQ(picture.At(105, 55), kBlue);
}

TEST_F(PainterTest, TransformationIsOneCallEach)
{
    GdiplusCalls calls;
    UIPainter painter(&control, canvas.Dc());
    calls.Take();
    painter.Translate(-7, 16777216);
    painter.ResetTransform();
    // Order 0 is before the transformation so far.
    EXPECT_EQ(calls.Take(), (GdiplusCalls::Lines{"TranslateWorldTransform G -7 1.67772e+07 0",
                                                 "ResetWorldTransform G"}));
}

TEST_F(PainterTest, OperationsAreTheseCallsAndNoOthers)
{
    GdiplusCalls calls;
    {
        UIPainter painter(&control, canvas.Dc());
        const auto made = calls.Take();
        ASSERT_EQ(made.size(), 3u);
        EXPECT_EQ(made[0].find("CreateFromHDC "), 0u);
        EXPECT_EQ(made[1], "SetInterpolationMode G 7");
        EXPECT_EQ(made[2], "SetSmoothingMode G 4");

        painter.SetPen(0x12345678);
        painter.SetBrush(0x9ABCDEF0);
        painter.Save();
        painter.Restore();
        EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{});

        painter.DrawLine(0, 0, 10, 3);
        EXPECT_EQ(calls.Take(),
                  (GdiplusCalls::Lines{"CreatePen1 12345678 1 0 *", "DrawLineI G P 100 50 110 53",
                                       "DeletePen P"}));
        painter.DrawRectange({1, 2, 11, 22});
        EXPECT_EQ(calls.Take(),
                  (GdiplusCalls::Lines{"CreatePen1 12345678 1 0 *",
                                       "DrawRectangleI G P 101 52 10 20", "DeletePen P"}));
        painter.FillRectange({1, 2, 11, 22});
        EXPECT_EQ(calls.Take(),
                  (GdiplusCalls::Lines{"CreateSolidFill 9ABCDEF0 *",
                                       "FillRectangleI G B 101 52 10 20", "DeleteBrush B"}));
        painter.FillRectange({11, 22, 1, 2});
        EXPECT_EQ(calls.Take()[1], "FillRectangleI G B 111 72 -10 -20");
    }
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{"DeleteGraphics G"});
}

// Always one unit of the world, whatever is drawn and wherever.
TEST_F(PainterTest, LineWidthIsAlwaysOne)
{
    GdiplusCalls calls;
    UIPainter painter(&control, canvas.Dc());
    painter.SetPen(kRed.value);
    for (int i = 0; i < 3; ++i) {
        calls.Take();
        painter.DrawLine(0, 20 * i, 30, 20 * i);
        EXPECT_EQ(calls.Take()[0], "CreatePen1 FFFF0000 1 0 *");
        painter.DrawRectange({0, 0, 20, 20});
        EXPECT_EQ(calls.Take()[0], "CreatePen1 FFFF0000 1 0 *");
        painter.Save();
        painter.Translate(1, 1);
        painter.SetRenderHint(UIPainter::Antialiasing);
    }
}

// States

TEST_F(PainterTest, RestoreGivesTheColoursBack)
{
    UIPainter painter(&control, canvas.Dc());
    painter.SetPen(kBlue.value);
    painter.SetBrush(kGreen.value);
    painter.Save();
    painter.DrawLine(0, 0, 30, 0); // a copy of the pair is current
    painter.SetPen(kRed.value);
    painter.SetBrush(kYellow.value);
    painter.DrawLine(0, 5, 30, 5);
    painter.FillRectange({0, 30, 10, 40});
    painter.Restore();
    painter.DrawLine(0, 10, 30, 10);
    painter.FillRectange({20, 30, 30, 40});
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(115, 50), kBlue);
    EXPECT_EQ(picture.At(115, 55), kRed);
    EXPECT_EQ(picture.At(115, 60), kBlue);
    EXPECT_EQ(picture.At(105, 85), kYellow);
    EXPECT_EQ(picture.At(125, 85), kGreen);
}

TEST_F(PainterTest, RestoreNeverTakesTheLastPair)
{
    GdiplusCalls calls;
    UIPainter painter(&control, canvas.Dc());
    painter.SetPen(kBlue.value);
    painter.Restore();
    painter.Restore();
    calls.Take();
    painter.DrawLine(0, 0, 10, 0);
    EXPECT_EQ(calls.Take()[0], "CreatePen1 FF0000FF 1 0 *");

    painter.Save();
    painter.SetPen(kRed.value);
    for (int i = 0; i < 5; ++i)
        painter.Restore();
    calls.Take();
    painter.DrawLine(0, 0, 10, 0);
    EXPECT_EQ(calls.Take()[0], "CreatePen1 FF0000FF 1 0 *");
}

TEST_F(PainterTest, StatesNestDeeply)
{
    constexpr unsigned long kDeep = 500;
    GdiplusCalls calls;
    UIPainter painter(&control, canvas.Dc());
    for (unsigned long i = 0; i < kDeep; ++i) {
        painter.SetPen(0xFF000000 + i);
        painter.Save();
    }
    for (unsigned long i = kDeep; i-- > 0;) {
        painter.Restore();
        calls.Take();
        painter.DrawLine(0, 0, 1, 1);
        char expected[64];
        std::snprintf(expected, sizeof expected, "CreatePen1 %08lX 1 0 *", 0xFF000000 + i);
        ASSERT_EQ(calls.Take()[0], expected);
    }
}

// The transformation is the caller's own to undo.
TEST_F(PainterTest, SaveAndRestoreKeepOnlyColours)
{
    GdiplusCalls calls;
    UIPainter painter(&control, canvas.Dc());
    painter.SetBrush(kBlue.value);
    calls.Take();
    painter.Save();
    painter.Translate(20, 0);
    painter.Restore();
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{"TranslateWorldTransform G 20 0 0"});
    painter.FillRectange({0, 0, 10, 10});
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(125, 55), kBlue);
    EXPECT_EQ(picture.At(105, 55), kWhite);
}

TEST_F(PainterTest, ReplacesOnlyTheCurrentColour)
{
    GdiplusCalls calls;
    UIPainter painter(&control, canvas.Dc());
    UIPen pen(kBlue.value);
    painter.SetPen(pen);
    pen = UIPen(kRed.value); // the painter has its own
    calls.Take();
    painter.DrawLine(0, 0, 10, 0);
    EXPECT_EQ(calls.Take()[0], "CreatePen1 FF0000FF 1 0 *");
    painter.FillRectange({0, 0, 5, 5});
    EXPECT_EQ(calls.Take()[0], "CreateSolidFill 00000000 *");
}

// Pens and brushes

template <class Colour>
class ColourTest : public testing::Test {
};
using ColourTypes = testing::Types<UIPen, UIBrush>;
TYPED_TEST_SUITE(ColourTest, ColourTypes, );

TYPED_TEST(ColourTest, IsAValueInACellOfItsOwn)
{
    EXPECT_EQ(TypeParam().GetColor(), 0u);
    TypeParam first(0x80123456);
    EXPECT_EQ(first.GetColor(), 0x80123456u);
    TypeParam second(first);
    EXPECT_EQ(second.GetColor(), 0x80123456u);
    second = TypeParam(7);
    EXPECT_EQ(first.GetColor(), 0x80123456u);
    EXPECT_EQ(second.GetColor(), 7u);
    first = second;
    EXPECT_EQ(first.GetColor(), 7u);
    const TypeParam& same = first;
    first = same;
    EXPECT_EQ(first.GetColor(), 7u);
    first = 9ul;
    EXPECT_EQ(first.GetColor(), 9u);
    EXPECT_EQ(second.GetColor(), 7u);
    EXPECT_EQ(sizeof(TypeParam), sizeof(void*));
}

TYPED_TEST(ColourTest, FreesItsCell)
{
    const auto use = [] {
        TypeParam first(1);
        TypeParam second(first);
        second = first;
    };
    use();
    const int before = HeapBlocks();
    for (int i = 0; i < 50; ++i)
        use();
    EXPECT_EQ(HeapBlocks(), before);
}

// Images

class PainterImageTest : public PainterTest {
protected:
    std::unique_ptr<UIImage> image = ImageOf(Quarters(20));
    UIPainter painter{&control, canvas.Dc()};
};

TEST_F(PainterImageTest, InItsOwnSize)
{
    painter.DrawImage(5, 6, image.get());
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(108, 59), kRed);
    EXPECT_EQ(picture.At(121, 59), kGreen);
    EXPECT_EQ(picture.At(108, 72), kBlue);
    EXPECT_EQ(picture.At(121, 72), kYellow);
    EXPECT_EQ(picture.At(102, 59), kWhite);
    EXPECT_EQ(picture.At(128, 72), kWhite);
    EXPECT_EQ(picture.At(121, 79), kWhite);
}

TEST_F(PainterImageTest, StretchedIntoASize)
{
    painter.DrawImage(0, 0, 60, 40, image.get());
    const Picture picture = canvas.Take();
    EXPECT_EQ(picture.At(110, 60), kRed);
    EXPECT_EQ(picture.At(145, 60), kGreen);
    EXPECT_EQ(picture.At(110, 82), kBlue);
    EXPECT_EQ(picture.At(145, 82), kYellow);
    EXPECT_EQ(picture.At(165, 60), kWhite);
}

TEST_F(PainterImageTest, PartOfIt)
{
    painter.DrawImage(0, 0, 40, 40, image.get(), 10, 0, 10, 10);
    EXPECT_EQ(canvas.Take().At(120, 70), kGreen);
    painter.DrawImage(0, 0, 40, 40, image.get(), 0, 10, 10, 10);
    EXPECT_EQ(canvas.Take().At(120, 70), kBlue);
}

TEST_F(PainterImageTest, EveryFormIsTheFullOne)
{
    GdiplusCalls calls;
    const auto drawn = [&](const std::function<void()>& draw) {
        calls.Take();
        draw();
        return calls.Take();
    };
    const GdiplusCalls::Lines expected{
        "CreateImageAttributes *", "SetTextRenderingHint G 3",
        "DrawImageRectRectI G I 103 54 30 25 0 0 20 20 2 A null null", "DisposeImageAttributes A"};
    EXPECT_EQ(drawn([&] { painter.DrawImage(3, 4, 30, 25, image.get(), 0, 0, 20, 20); }), expected);
    EXPECT_EQ(drawn([&] { painter.DrawImage(3, 4, 30, 25, image.get()); }), expected);
    EXPECT_EQ(drawn([&] { painter.DrawImage(RECT{3, 4, 33, 29}, image.get()); }), expected);
    EXPECT_EQ(drawn([&] { painter.DrawImage(3, 4, image.get()); })[2],
              "DrawImageRectRectI G I 103 54 20 20 0 0 20 20 2 A null null");
    EXPECT_EQ(drawn([&] { painter.DrawImage(-3, -4, 5, 6, image.get(), -1, 2, 300, 4); })[2],
              "DrawImageRectRectI G I 97 46 5 6 -1 2 300 4 2 A null null");
}

TEST_F(PainterImageTest, OpacityIsAColourMatrix)
{
    GdiplusCalls calls;
    image->SetOpacity(50);
    painter.DrawImage(0, 0, image.get());
    EXPECT_EQ(calls.Take(),
              (GdiplusCalls::Lines{"CreateImageAttributes *",
                                   "SetImageAttributesColorMatrix A 0 1 "
                                   "(1 0 0 0 0 0 1 0 0 0 0 0 1 0 0 0 0 0 0.5 0 0 0 0 0 1) null 0",
                                   "SetTextRenderingHint G 3",
                                   "DrawImageRectRectI G I 100 50 20 20 0 0 20 20 2 A null null",
                                   "DisposeImageAttributes A"}));
    for (const auto& [opacity, share] :
         {std::pair{0, "0"}, {99, "0.99"}, {1, "0.01"}, {-5, "-0.05"}}) {
        image->SetOpacity(opacity);
        painter.DrawImage(0, 0, image.get());
        EXPECT_EQ(calls.Take()[1], std::string("SetImageAttributesColorMatrix A 0 1 "
                                               "(1 0 0 0 0 0 1 0 0 0 0 0 1 0 0 0 0 0 ") +
                                       share + " 0 0 0 0 0 1) null 0");
    }
}

TEST_F(PainterImageTest, OpacityMixes)
{
    for (const auto& [opacity, colour] :
         {std::pair{0, kWhite}, {50, Argb{0xFFFF7F7F}}, {99, Argb{0xFFFF0303}}, {100, kRed}}) {
        canvas.Fill(kWhite);
        image->SetOpacity(opacity);
        painter.DrawImage(0, 0, image.get());
        SCOPED_TRACE(opacity);
        ExpectNear(canvas.Take().At(104, 54), colour);
    }
}

TEST_F(PainterImageTest, OpacityAboveAHundredIsOpaque)
{
    GdiplusCalls calls;
    for (const int opacity : {100, 101, 150, 100000}) {
        canvas.Fill(kWhite);
        calls.Take();
        image->SetOpacity(opacity);
        painter.DrawImage(0, 0, image.get());
        EXPECT_EQ(calls.Take().size(), 4u) << "no matrix at " << opacity;
        EXPECT_EQ(canvas.Take().At(104, 54), kRed);
    }
}

TEST_F(PainterImageTest, TextsAreFittedToTheGridFromThenOn)
{
    GdiplusCalls calls;
    const auto hint = [&] {
        auto current = Gdiplus::TextRenderingHintSystemDefault;
        Gdiplus::DllExports::GdipGetTextRenderingHint(calls.Graphics(), &current);
        return current;
    };
    painter.SetBrush(kBlue.value);
    painter.FillRectange({0, 0, 5, 5});
    EXPECT_NE(hint(), Gdiplus::TextRenderingHintAntiAliasGridFit);
    painter.DrawImage(0, 0, image.get());
    EXPECT_EQ(hint(), Gdiplus::TextRenderingHintAntiAliasGridFit);
    painter.FillRectange({0, 0, 5, 5});
    painter.ResetTransform();
    EXPECT_EQ(hint(), Gdiplus::TextRenderingHintAntiAliasGridFit);
}

TEST_F(PainterImageTest, NoImageIsNotDrawn)
{
    GdiplusCalls calls;
    painter.DrawImage(0, 0, 10, 10, nullptr, 0, 0, 5, 5);
    painter.DrawImage(0, 0, 10, 10, nullptr);
    painter.DrawImage(RECT{0, 0, 10, 10}, nullptr);
    painter.DrawImage(0, 0, nullptr);
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{});
    EXPECT_EQ(canvas.Take(), blank);
}

TEST_F(PainterImageTest, ImageWithoutGdiplusBitmapIsNotDrawn)
{
    UIImage empty;
    UIImage gdi(::CreateBitmap(10, 10, 1, 32, nullptr));
    ASSERT_NE(gdi.GetHBITMAP(), nullptr);
    GdiplusCalls calls;
    for (UIImage* const none : {&empty, &gdi}) {
        painter.DrawImage(0, 0, 10, 10, none, 0, 0, 5, 5);
        painter.DrawImage(0, 0, 10, 10, none);
        painter.DrawImage(RECT{0, 0, 10, 10}, none);
        painter.DrawImage(0, 0, none);
    }
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{});
    EXPECT_EQ(canvas.Take(), blank);
}

TEST_F(PainterImageTest, AStoredBlurChangesNothingWhenDrawn)
{
    const Picture before = PictureOf(*image->GetBitmap());
    GdiplusCalls calls;
    image->SetBlur(-3, false);
    painter.DrawImage(0, 0, image.get());
    EXPECT_EQ(calls.Take().size(), 4u);
    EXPECT_EQ(PictureOf(*image->GetBitmap()), before);
}

// Where it draws

// Every operation, on a painter that may have nothing to draw on.
void UseAll(UIPainter& painter, UIImage* image)
{
    painter.SetPen(kRed.value);
    painter.SetBrush(kRed.value);
    painter.Save();
    painter.Translate(3, 4);
    painter.SetRenderHint(UIPainter::Antialiasing);
    painter.DrawLine(0, 0, 50, 50);
    painter.DrawLine(POINT{0, 9}, POINT{50, 9});
    painter.DrawRectange({0, 0, 20, 20});
    painter.FillRectange({0, 0, 20, 20});
    painter.DrawImage(0, 0, 10, 10, image, 0, 0, 5, 5);
    painter.DrawImage(0, 0, 10, 10, image);
    painter.DrawImage(RECT{0, 0, 10, 10}, image);
    painter.DrawImage(0, 0, image);
    painter.ResetTransform();
    painter.Restore();
    painter.Restore();
}

TEST_F(PainterTest, WithoutControlDrawsNothing)
{
    const auto image = ImageOf(Quarters(4));
    GdiplusCalls calls;
    UIPainter painter(nullptr, canvas.Dc());
    UseAll(painter, image.get());
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{});
    EXPECT_EQ(canvas.Take(), blank);
}

TEST_F(PainterTest, WithoutDeviceContextTakesTheManagersOwn)
{
    ControlHost host(50, 40);
    auto& child = host.Add<CControlUI>();
    ASSERT_NE(host.Manager().GetPaintDC(), nullptr);
    GdiplusCalls calls;
    UIPainter painter(&child, nullptr);
    char expected[64];
    std::snprintf(expected, sizeof expected, "CreateFromHDC %p *",
                  static_cast<void*>(host.Manager().GetPaintDC()));
    EXPECT_EQ(calls.Take().at(0), expected);
    painter.SetBrush(kRed.value);
    painter.FillRectange({0, 0, 30, 30});
    EXPECT_EQ(host.Screen().At(15, 15), kRed);
}

TEST_F(PainterTest, ADeviceContextOfItsOwnComesBeforeTheManagers)
{
    ControlHost host(50, 40);
    auto& child = host.Add<CControlUI>();
    GdiplusCalls calls;
    UIPainter painter(&child, canvas.Dc());
    char expected[64];
    std::snprintf(expected, sizeof expected, "CreateFromHDC %p *", static_cast<void*>(canvas.Dc()));
    EXPECT_EQ(calls.Take().at(0), expected);
}

TEST_F(PainterTest, WithoutAnyDeviceContextDrawsNothing)
{
    const auto image = ImageOf(Quarters(4));
    GdiplusCalls calls;
    UIPainter unmanaged(&control, nullptr);
    UseAll(unmanaged, image.get());
    ASSERT_EQ(manager.GetPaintDC(), nullptr);
    control.SetManager(&manager, nullptr, false);
    UIPainter windowless(&control, nullptr);
    UseAll(windowless, image.get());
    control.SetManager(nullptr, nullptr, false);
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{});
}

// There is nothing to transform then.
TEST_F(PainterTest, TransformingNothingDoesNoHarm)
{
    UIImage empty;
    UIPainter painters[] = {UIPainter(nullptr, canvas.Dc()), UIPainter(&control, nullptr),
                            UIPainter(&empty)};
    GdiplusCalls calls;
    for (auto& painter : painters) {
        painter.Translate(5, 5);
        painter.ResetTransform();
    }
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{});
}

TEST_F(PainterTest, DrawsIntoAnImageFromItsCorner)
{
    UIImage target(40, 30);
    {
        UIPainter painter(&target);
        painter.SetBrush(kGreen.value);
        painter.FillRectange({5, 5, 20, 20});
        painter.SetPen(kBlue.value);
        painter.DrawLine(0, 25, 39, 25);
        const auto picture = ImageOf(Quarters(10));
        painter.Translate(20, 0);
        painter.DrawImage(5, 5, picture.get());
    }
    const Picture drawn = PictureOf(*target.GetBitmap());
    EXPECT_EQ(drawn.At(12, 12), kGreen);
    EXPECT_EQ(drawn.At(20, 25), kBlue);
    EXPECT_EQ(drawn.At(27, 7), kRed);
    EXPECT_EQ(drawn.At(32, 12), kYellow);
    EXPECT_EQ(drawn.At(2, 2), Argb{0});
}

// Callers that want it smooth ask for it.
TEST_F(PainterTest, IntoAnImageIsNotSmoothed)
{
    UIImage target(40, 30);
    GdiplusCalls calls;
    UIPainter painter(&target);
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{"GetImageGraphicsContext I *"});
    painter.DrawLine(0, 0, 10, 10);
    auto smoothing = Gdiplus::SmoothingModeAntiAlias;
    Gdiplus::DllExports::GdipGetSmoothingMode(calls.Graphics(), &smoothing);
    EXPECT_NE(smoothing, Gdiplus::SmoothingModeAntiAlias);
    auto interpolation = Gdiplus::InterpolationModeHighQualityBicubic;
    Gdiplus::DllExports::GdipGetInterpolationMode(calls.Graphics(), &interpolation);
    EXPECT_NE(interpolation, Gdiplus::InterpolationModeHighQualityBicubic);
}

TEST_F(PainterTest, IntoAnImageWithoutBitmapDrawsNothing)
{
    const auto image = ImageOf(Quarters(4));
    UIImage empty;
    UIImage gdi(::CreateBitmap(10, 10, 1, 32, nullptr));
    GdiplusCalls calls;
    UIPainter intoEmpty(&empty);
    UseAll(intoEmpty, image.get());
    UIPainter intoGdi(&gdi);
    UseAll(intoGdi, image.get());
    UIPainter intoNull(static_cast<UIImage*>(nullptr));
    UseAll(intoNull, image.get());
    for (const auto& line : calls.Take())
        EXPECT_EQ(line.find("Draw"), std::string::npos) << line;
}

TEST_F(PainterTest, OnlyOneRenderHintHasAMeaning)
{
    UIImage target(40, 30);
    UIPainter painter(&target);
    GdiplusCalls calls;
    for (const int hint : {0, 2, 3, 4, 8, -1, 0x7FFFFFFF})
        painter.SetRenderHint(static_cast<UIPainter::RenderHint>(hint));
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{});
    EXPECT_EQ(UIPainter::Antialiasing, 1);
    painter.SetRenderHint(UIPainter::Antialiasing);
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{"SetSmoothingMode G 4"});
}

// Copies

TEST_F(PainterTest, CopiesShareOneRecord)
{
    GdiplusCalls calls;
    {
        UIPainter painter(&control, canvas.Dc());
        Undestroyed<UIPainter> copy(painter);
        calls.Take();
        copy->SetPen(kRed.value);
        copy->Save();
        copy->SetPen(kBlue.value);
        painter.DrawLine(0, 0, 10, 0);
        EXPECT_EQ(calls.Take()[0], "CreatePen1 FF0000FF 1 0 *");
        painter.Restore();
        copy->DrawLine(0, 0, 10, 0);
        EXPECT_EQ(calls.Take()[0], "CreatePen1 FFFF0000 1 0 *");
    }
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{"DeleteGraphics G"});
}

TEST_F(PainterTest, AssignmentSharesTheRecordToo)
{
    GdiplusCalls calls;
    {
        UIPainter painter(&control, canvas.Dc());
        Undestroyed<UIPainter> other(painter);
        {
            // Its own record, without graphics, is given up.
            const UIPainter none(nullptr, nullptr);
            Undestroyed<UIPainter> assigned(none);
            *assigned = painter;
            assigned->SetPen(kRed.value);
        }
        calls.Take();
        other->DrawLine(0, 0, 10, 0);
        EXPECT_EQ(calls.Take()[0], "CreatePen1 FFFF0000 1 0 *");
    }
    EXPECT_EQ(calls.Take(), GdiplusCalls::Lines{"DeleteGraphics G"});
}

TEST_F(PainterTest, IsOnePointerAndPolymorphic)
{
    struct Derived : UIPainter {
        Derived(CControlUI* on, HDC dc, bool& flag) : UIPainter(on, dc), destroyed(flag) {}
        ~Derived() override { destroyed = true; }
        bool& destroyed;
    };
    EXPECT_EQ(sizeof(UIPainter), 2 * sizeof(void*));
    bool destroyed = false;
    std::unique_ptr<UIPainter>(new Derived(&control, canvas.Dc(), destroyed)).reset();
    EXPECT_TRUE(destroyed);
}

TEST_F(PainterTest, FreesWhatItMakes)
{
    const auto image = ImageOf(Quarters(8));
    UIImage target(20, 20);
    const auto use = [&] {
        image->SetOpacity(50);
        UIPainter onControl(&control, canvas.Dc());
        UseAll(onControl, image.get());
        UIPainter intoImage(&target);
        UseAll(intoImage, image.get());
        UIPainter nowhere(nullptr, nullptr);
        UseAll(nowhere, image.get());
    };
    GdiplusObjects();
    use();
    const int gdiplus = GdiplusObjects();
    const int gdi = GdiObjects();
    const int heap = HeapBlocks();
    for (int i = 0; i < 50; ++i)
        use();
    EXPECT_EQ(GdiplusObjects(), gdiplus);
    EXPECT_EQ(GdiObjects(), gdi);
    EXPECT_EQ(HeapBlocks(), heap);
}

} // namespace
} // namespace test
