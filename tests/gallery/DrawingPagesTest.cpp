#include "gallery/Canvas.h"
#include "support/ObjectCounters.h"
#include "support/Picture.h"
#include "tests/gallery/PageKit.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

using namespace DuiLib;
using test::Argb;
using test::Picture;
using test::Pump;

namespace {

constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kBlue{0xFF007DFF};
constexpr Argb kOrange{0xFFF08C00};
constexpr Argb kTile{0xFFD6E4F5}; // of "tile.png", in its corner
constexpr Argb kEdge{0xFF007BFF}; // of "panel.png"
constexpr Argb kCell{0xFFF3F5F8}; // behind an animation

constexpr const wchar_t* kDrawingPages[] = {L"image-attributes", L"images", L"painter",
                                            L"frame-animation", L"thumbnails"};

class DrawingPagesTest : public test::PageKit {
protected:
    void ShowPage(std::wstring_view name)
    {
        PageKit::ShowPage(name);
        Paint();
    }
    void LeavePage() { ShowPage(L"toggle-switch"); }

    // What is invalid is painted, and what that posts is done.
    void Paint()
    {
        ::UpdateWindow(window.GetHWND());
        Pump();
        ::UpdateWindow(window.GetHWND());
    }

    // The control that the page has put into a container.
    template <class Control>
    Control& Placed(const wchar_t* container)
    {
        return dynamic_cast<Control&>(*Find<CContainerUI>(container).GetItemAt(0));
    }
    void Choose(const wchar_t* name, bool chosen = true)
    {
        PageKit::Choose(name, chosen);
        Paint();
    }
    void Slide(const wchar_t* name, int value)
    {
        auto& slider = Find<CSliderUI>(name);
        slider.SetValue(value);
        window.Manager().SendNotify(&slider, DUI_MSGTYPE_VALUECHANGED);
        Paint();
    }
    void Write(const wchar_t* edit, const wchar_t* text)
    {
        auto& control = Find<CEditUI>(edit);
        control.SetText(text);
        window.Manager().SendNotify(&control, DUI_MSGTYPE_TEXTCHANGED);
        Paint();
    }
    int Number(const wchar_t* name) { return std::stoi(Text(name)); }

    // What a control shows.
    Picture PictureOf(const CControlUI& control)
    {
        RECT client{};
        ::GetClientRect(window.GetHWND(), &client);
        test::Canvas canvas(client.right, client.bottom);
        ::SendMessageW(window.GetHWND(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas.Dc()),
                       PRF_CLIENT);
        return Part(canvas.Take(), control.GetPos());
    }
    static Picture Part(const Picture& whole, const RECT& place)
    {
        Picture part(place.right - place.left, place.bottom - place.top);
        for (int y = 0; y < part.Height(); ++y) {
            for (int x = 0; x < part.Width(); ++x)
                part.Set(x, y, whole.At(place.left + x, place.top + y));
        }
        return part;
    }

    // Objects of the system; a controller keeps a little memory for each control that it heard.
    template <class Action>
    static void ExpectNoObject(Action action)
    {
        constexpr int kTimes = 10;
        action();
        action();
        const int gdi = test::GdiObjects();
        const int gdiplus = test::GdiplusObjects();
        const int windows = test::UserWindows();
        for (int i = 0; i < kTimes; ++i)
            action();
        EXPECT_EQ(test::GdiObjects(), gdi) << test::GdiObjectKinds();
        EXPECT_EQ(test::GdiplusObjects(), gdiplus);
        EXPECT_EQ(test::UserWindows(), windows);
    }
};

TEST_F(DrawingPagesTest, AnExampleIsTakenApartAndDrawn)
{
    ShowPage(L"image-attributes");
    Choose(L"attributes.grid");
    EXPECT_EQ(Text(L"attributes.file"), "pictures/panel.png");
    EXPECT_EQ(Text(L"attributes.dest"), "64, 42, 304, 192");
    EXPECT_EQ(Text(L"attributes.corner"), "12, 12, 12, 12");
    EXPECT_EQ(Text(L"attributes.hole"), "true");
    EXPECT_EQ(Text(L"attributes.info"), "48 × 48");
    EXPECT_EQ(Text(L"attributes.success"), "true");

    const Picture picture = PictureOf(Placed<gallery::Canvas>(L"attributes.picture"));
    EXPECT_EQ(picture.At(64, 117), kEdge) << "the edge at the left";
    EXPECT_EQ(picture.At(303, 117), kEdge);
    EXPECT_NE(picture.At(63, 117), kEdge);
    constexpr Argb kInside{0xFFE8F3FF};
    EXPECT_EQ(picture.Count(kInside, {80, 60, 288, 170}), 0) << "a hole";
}

TEST_F(DrawingPagesTest, AMaskedPictureShowsWhatIsBehind)
{
    ShowPage(L"image-attributes");
    constexpr Argb kHills{0xFF608A98};
    const auto& canvas = Placed<gallery::Canvas>(L"attributes.picture");
    Choose(L"attributes.whole");
    EXPECT_GT(PictureOf(canvas).Count(kHills), 1000);
    Choose(L"attributes.mask");
    EXPECT_EQ(PictureOf(canvas).Count(kHills), 0);
    Choose(L"attributes.whole");
    EXPECT_GT(PictureOf(canvas).Count(kHills), 1000);
}

TEST_F(DrawingPagesTest, AFaultyStringCountsUpToTheFault)
{
    ShowPage(L"image-attributes");
    Choose(L"attributes.faulty");
    EXPECT_EQ(Text(L"attributes.dest"), "64, 42, 304, 192");
    EXPECT_EQ(Text(L"attributes.fade"), "255");
    EXPECT_EQ(Text(L"attributes.source"), "0, 0, 240, 150") << "the whole picture";
}

TEST_F(DrawingPagesTest, AStringIsReadWhileItIsWritten)
{
    ShowPage(L"image-attributes");
    Write(L"attributes.text", L"file='pictures/tile.png' mask='#FF00FF' fade='300' ytiled='true'");
    EXPECT_EQ(Text(L"attributes.file"), "pictures/tile.png");
    EXPECT_EQ(Text(L"attributes.colour"), "#00FF00FF");
    EXPECT_EQ(Text(L"attributes.fade"), "44");
    EXPECT_EQ(Text(L"attributes.tiled"), "false, true");
    EXPECT_EQ(Text(L"attributes.success"), "true");

    Write(L"attributes.text", L"file='pictures/nothing.png'");
    EXPECT_EQ(Text(L"attributes.info"), "nullptr");
    EXPECT_EQ(Text(L"attributes.success"), "false");
}

TEST_F(DrawingPagesTest, TheDestinationFollowsTheScale)
{
    ShowPage(L"image-attributes");
    Choose(L"attributes.grid");
    window.SetScale(150);
    Paint();
    const Picture picture = PictureOf(Placed<gallery::Canvas>(L"attributes.picture"));
    EXPECT_EQ(picture.At(96, 175), kEdge);
    EXPECT_EQ(picture.At(455, 175), kEdge);
    EXPECT_NE(picture.At(95, 175), kEdge);
    EXPECT_NE(picture.At(456, 175), kEdge);
}

TEST_F(DrawingPagesTest, AnImageWithoutSettingsIsTheOriginal)
{
    ShowPage(L"images");
    auto& original = Placed<gallery::Canvas>(L"images.original.picture");
    auto& worked = Placed<gallery::Canvas>(L"images.worked.picture");
    EXPECT_FALSE(PictureOf(worked) == PictureOf(original));
    Slide(L"images.blur", 0);
    Slide(L"images.brightness", 0);
    Slide(L"images.opacity", 100);
    EXPECT_TRUE(PictureOf(worked) == PictureOf(original));
    Slide(L"images.opacity", 0);
    EXPECT_EQ(PictureOf(worked).At(0, 0), kTile) << "the tile behind";
}

TEST_F(DrawingPagesTest, BlurIsKeptAndBrightnessIsNot)
{
    ShowPage(L"images");
    Slide(L"images.opacity", 70);
    Slide(L"images.blur", 7);
    Slide(L"images.brightness", 90);
    EXPECT_EQ(Text(L"images.worked.settings"), "opacity 70   blur 7   brightness 0");
    EXPECT_EQ(Text(L"images.original.settings"), "opacity 100   blur 0   brightness 0");
}

TEST_F(DrawingPagesTest, ACloneHasThePixelsAndNotTheSettings)
{
    ShowPage(L"images");
    Slide(L"images.blur", 0);
    Slide(L"images.brightness", 0);
    Slide(L"images.opacity", 30);
    Click(L"images.clone");
    Paint();
    EXPECT_EQ(Text(L"images.clone.settings"), "opacity 100   blur 0   brightness 0");
    EXPECT_TRUE(PictureOf(Placed<gallery::Canvas>(L"images.clone.picture")) ==
                PictureOf(Placed<gallery::Canvas>(L"images.original.picture")));
}

TEST_F(DrawingPagesTest, ThePageTellsWhetherTheEffectsAreThere)
{
    ShowPage(L"images");
    auto& worked = Placed<gallery::Canvas>(L"images.worked.picture");
    Slide(L"images.opacity", 100);
    Slide(L"images.blur", 0);
    Slide(L"images.brightness", 0);
    const Picture before = PictureOf(worked);
    Slide(L"images.brightness", 255);
    const bool isBrighter = !(PictureOf(worked) == before);
    const auto expected = CResourceManager::GetInstance()->GetText(
        isBrighter ? L"images.with-effects" : L"images.without-effects");
    EXPECT_EQ(Text(L"images.effects"), test::Utf8(expected.GetData()));
}

TEST_F(DrawingPagesTest, TheImageIsSavedAsAPng)
{
    ShowPage(L"images");
    Click(L"images.save");
    const std::filesystem::path path = Find<CControlUI>(L"images.path").GetText().GetData();
    {
        Gdiplus::Bitmap saved(path.c_str());
        EXPECT_EQ(saved.GetWidth(), 480u);
        EXPECT_EQ(saved.GetHeight(), 300u);
        GUID format{};
        saved.GetRawFormat(&format);
        EXPECT_TRUE(format == Gdiplus::ImageFormatPNG);
    }
    EXPECT_TRUE(std::filesystem::remove(path));
}

TEST_F(DrawingPagesTest, ADrawingMovesWithItsControl)
{
    ShowPage(L"painter");
    auto& control = Placed<gallery::Canvas>(L"painter.control");
    Slide(L"painter.offset", 0);
    const RECT place = control.GetPos();
    const Picture before = PictureOf(control);
    Slide(L"painter.offset", 40);
    EXPECT_EQ(control.GetPos().left, place.left + 40);
    EXPECT_EQ(control.GetPos().top, place.top + 8);
    test::ExpectSimilar(PictureOf(control), before, 2, 0.01);
    EXPECT_EQ(before.At(10, 140), kBlue) << "the left edge of a box";
}

TEST_F(DrawingPagesTest, WithoutRestoreTheColoursStay)
{
    ShowPage(L"painter");
    for (const wchar_t* const place : {L"painter.control", L"painter.image"}) {
        auto& drawing = Placed<gallery::Canvas>(place);
        Choose(L"painter.restore");
        EXPECT_EQ(PictureOf(drawing).At(308, 70), kBlue);
        Choose(L"painter.restore", false);
        EXPECT_EQ(PictureOf(drawing).At(308, 70), kOrange);
    }
}

TEST_F(DrawingPagesTest, TranslationsAddUpAndAreReset)
{
    ShowPage(L"painter");
    auto& drawing = Placed<gallery::Canvas>(L"painter.control");
    Slide(L"painter.translate", 0);
    const Picture still = PictureOf(drawing);
    EXPECT_EQ(still.At(100, 200), kWhite);
    Slide(L"painter.translate", 18);
    const Picture moved = PictureOf(drawing);
    EXPECT_EQ(moved.At(100, 200), kBlue) << "the last of six boxes";
    for (const POINT point : {POINT{10, 140}, POINT{204, 130}, POINT{308, 70}})
        EXPECT_EQ(moved.At(point.x, point.y), still.At(point.x, point.y));
}

TEST_F(DrawingPagesTest, AFaintPictureHasAnOpacity)
{
    ShowPage(L"painter");
    auto& drawing = Placed<gallery::Canvas>(L"painter.control");
    Choose(L"painter.opacity", false);
    const Picture full = PictureOf(drawing);
    EXPECT_EQ(full.At(197, 200), full.At(197, 147)) << "both are the whole picture";
    Choose(L"painter.opacity");
    const Picture faint = PictureOf(drawing);
    EXPECT_NE(faint.At(197, 200), full.At(197, 200));
    EXPECT_EQ(faint.At(197, 147), full.At(197, 147));
}

class FrameAnimationPageTest : public DrawingPagesTest {
protected:
    static constexpr const wchar_t* kPlaces[] = {L"frames.bitmaps", L"frames.preloaded",
                                                 L"frames.names", L"frames.attributes",
                                                 L"frames.background"};
    static constexpr UINT kTimer = 17303;

    FrameAnimationPageTest() { ShowPage(L"frame-animation"); }

    CImageAnimationControlUI& Animation(const wchar_t* place)
    {
        return Placed<CImageAnimationControlUI>(place);
    }
    bool HasTimer(CImageAnimationControlUI& animation)
    {
        if (!animation.SetTimer(kTimer, 10'000))
            return true;
        animation.KillTimer(kTimer);
        return false;
    }
    void Tick(CImageAnimationControlUI& animation)
    {
        window.Manager().SendNotify(&animation, DUI_MSGTYPE_TIMER, kTimer);
    }
    bool ShowsFrame(const CImageAnimationControlUI& animation)
    {
        const Picture picture = PictureOf(animation);
        return picture.Count(kCell) < picture.Width() * picture.Height();
    }
};

TEST_F(FrameAnimationPageTest, EveryKindShowsAFrameAndStandsStill)
{
    for (const wchar_t* const place : kPlaces) {
        SCOPED_TRACE(test::Utf8(place));
        auto& animation = Animation(place);
        EXPECT_TRUE(WaitUntil([&] { return ShowsFrame(animation); }));
        EXPECT_FALSE(HasTimer(animation));
        EXPECT_TRUE(animation.IsAnimating());
    }
}

TEST_F(FrameAnimationPageTest, StartRunsAllAndStopEmptiesThem)
{
    Click(L"frames.start");
    for (const wchar_t* const place : kPlaces)
        EXPECT_TRUE(HasTimer(Animation(place))) << test::Utf8(place);
    EXPECT_EQ(Text(L"frames.state"), "IsAnimating: 5 / 5");
    Click(L"frames.stop");
    for (const wchar_t* const place : kPlaces) {
        SCOPED_TRACE(test::Utf8(place));
        EXPECT_FALSE(HasTimer(Animation(place)));
        EXPECT_FALSE(ShowsFrame(Animation(place)));
    }
    EXPECT_EQ(Text(L"frames.state"), "IsAnimating: 0 / 5");
}

TEST_F(FrameAnimationPageTest, TheTimerShowsOneFrameAfterTheOther)
{
    auto& animation = Animation(L"frames.bitmaps");
    Click(L"frames.start");
    EXPECT_FALSE(ShowsFrame(animation)) << "nothing before the first tick";
    EXPECT_TRUE(WaitUntil([&] { return ShowsFrame(animation); }));
    const Picture first = PictureOf(animation);
    EXPECT_TRUE(WaitUntil([&] { return !(PictureOf(animation) == first); }));
}

TEST_F(FrameAnimationPageTest, TheThreadDecodesTheFrameOfTheTick)
{
    auto& animation = Animation(L"frames.background");
    ASSERT_TRUE(WaitUntil([&] { return ShowsFrame(animation); }));
    const Picture first = PictureOf(animation);
    Slide(L"frames.duration", 0);
    Tick(animation);
    EXPECT_TRUE(WaitUntil([&] { return !(PictureOf(animation) == first); }));
    EXPECT_TRUE(ShowsFrame(animation));
}

TEST_F(FrameAnimationPageTest, WithoutADurationEachTickIsAFrame)
{
    Slide(L"frames.duration", 0);
    auto& animation = Animation(L"frames.preloaded");
    const Picture first = PictureOf(animation);
    for (int i = 0; i < 24; ++i) {
        if (i > 0) {
            EXPECT_FALSE(PictureOf(animation) == first) << i;
        }
        Tick(animation);
    }
    EXPECT_TRUE(PictureOf(animation) == first) << "24 frames";
}

TEST_F(FrameAnimationPageTest, DurationAndTickDecideTheFrame)
{
    Slide(L"frames.duration", 2400);
    Slide(L"frames.precision", 100);
    auto& animation = Animation(L"frames.preloaded");
    auto& other = Animation(L"frames.names");
    for (auto* const each : {&animation, &other}) {
        each->Start();
        each->KillTimer(kTimer);
    }
    for (int i = 0; i < 7; ++i)
        Tick(animation);
    Slide(L"frames.precision", 175);
    for (int i = 0; i < 4; ++i)
        Tick(other);
    EXPECT_TRUE(PictureOf(animation) == PictureOf(other)) << "both after 700 ms";
}

TEST_F(FrameAnimationPageTest, PaddingMakesTheFrameSmaller)
{
    const auto& animation = Animation(L"frames.bitmaps");
    const RECT before = PictureOf(animation).BoundsOfAllBut(kCell);
    EXPECT_LT(before.left, 20);
    Slide(L"frames.padding", 32);
    const RECT after = PictureOf(animation).BoundsOfAllBut(kCell);
    EXPECT_GE(after.left, 32);
    EXPECT_LE(after.right, 128 - 32);
}

TEST_F(FrameAnimationPageTest, ALimitOfRoundsEndsTheAnimation)
{
    Choose(L"frames.rounds.2");
    auto& animation = Animation(L"frames.bitmaps");
    animation.Start();
    const auto ticksUntilTheEnd = [&] {
        int ticks = 0;
        for (; animation.IsAnimating() && ticks < 200; ++ticks)
            Tick(animation);
        return ticks;
    };
    EXPECT_EQ(ticksUntilTheEnd(), 43) << "two cycles of 22 ticks, the last but for its start";
    EXPECT_EQ(Text(L"frames.state"), "IsAnimating: 4 / 5");

    Choose(L"frames.rounds.0");
    animation.Start();
    EXPECT_EQ(ticksUntilTheEnd(), 200) << "without end";
}

TEST_F(FrameAnimationPageTest, HidingStopsAndShowingStarts)
{
    Choose(L"frames.visible", false);
    EXPECT_EQ(Text(L"frames.state"), "IsAnimating: 0 / 5");
    for (const wchar_t* const place : kPlaces)
        EXPECT_FALSE(Animation(place).IsVisible());
    Choose(L"frames.visible");
    EXPECT_EQ(Text(L"frames.state"), "IsAnimating: 5 / 5");
    for (const wchar_t* const place : kPlaces)
        EXPECT_TRUE(HasTimer(Animation(place)));
}

TEST_F(FrameAnimationPageTest, ThePageMayBeLeftWhileAnimationsAndTheirThreadRun)
{
    ExpectNoObject([this] {
        ShowPage(L"frame-animation");
        Slide(L"frames.precision", 10);
        Click(L"frames.start");
        Tick(Animation(L"frames.background"));
        LeavePage();
    });
}

TEST_F(FrameAnimationPageTest, TheWindowMayCloseWhileAnimationsAndTheirThreadRun)
{
    Click(L"frames.start");
    Tick(Animation(L"frames.background"));
    ::DestroyWindow(window.GetHWND());
    Pump();
    EXPECT_FALSE(window.IsOpen());
}

class ThumbnailsPageTest : public DrawingPagesTest {
protected:
    struct Counts {
        int requests;
        int hits;
        int loads;
        int evictions;

        bool operator==(const Counts&) const = default;
    };

    ThumbnailsPageTest()
    {
        EvictEverything();
        ShowPage(L"thumbnails");
    }

    // Other tests of the process use the same cache.
    static void EvictEverything()
    {
        for (int i = 0; i < 201; ++i)
            ResourceQueue::GetInstance()->GetResource(
                (L"Q:\\nothing\\" + std::to_wstring(i)).c_str());
    }

    static std::filesystem::path Folder()
    {
        return (CPaintManagerUI::GetResourcePath() + L"photographs").GetData();
    }
    static int Files()
    {
        const auto begin = std::filesystem::directory_iterator(Folder());
        return static_cast<int>(std::distance(begin, std::filesystem::directory_iterator()));
    }
    static ThumbnailData* Entry(const wchar_t* file)
    {
        return ResourceQueue::GetInstance()->GetResource((Folder() / file).c_str());
    }

    Counts Shown()
    {
        return {Number(L"thumbnails.requests"), Number(L"thumbnails.hits"),
                Number(L"thumbnails.loads"), Number(L"thumbnails.evictions")};
    }
    void Repaint()
    {
        Placed<gallery::Canvas>(L"thumbnails.grid").Invalidate();
        Paint();
    }
};

TEST_F(ThumbnailsPageTest, TheFirstPaintLoadsAndFurtherOnesHit)
{
    const int files = Files();
    Counts counts = Shown();
    EXPECT_EQ(counts.loads, files);
    EXPECT_EQ(counts.hits, counts.requests - files);
    EXPECT_EQ(counts.evictions, 0);
    const int before = counts.hits;
    Repaint();
    counts = Shown();
    EXPECT_GE(counts.hits, before + files);
    EXPECT_EQ(counts.loads, files);
    EXPECT_EQ(counts.hits + counts.loads, counts.requests);
}

TEST_F(ThumbnailsPageTest, OtherSpellingsEvictTheFolder)
{
    const int files = Files();
    Click(L"thumbnails.fill");
    Paint();
    const Counts counts = Shown();
    EXPECT_EQ(counts.loads, files + 201 + files);
    EXPECT_EQ(counts.evictions, files);
}

TEST_F(ThumbnailsPageTest, ReloadMakesThePicturesAnew)
{
    const Counts before = Shown();
    Click(L"thumbnails.reload");
    Paint();
    const Counts after = Shown();
    EXPECT_EQ(after.evictions, 0);
    EXPECT_GT(after.loads, before.loads);
    EXPECT_LT(after.loads, before.loads + Files()) << "files that are no pictures cannot be";
}

TEST_F(ThumbnailsPageTest, TheFormDecidesTheSizeOfWhatIsLoaded)
{
    EXPECT_EQ(Entry(L"fjord.jpg")->thumbnail->GetWidth(), 128u);
    Choose(L"thumbnails.form.tip");
    EXPECT_EQ(Entry(L"fjord.jpg")->thumbnail->GetWidth(), 128u) << "a hit";
    Click(L"thumbnails.reload");
    EXPECT_EQ(Entry(L"fjord.jpg")->thumbnail->GetWidth(), 384u);
    EXPECT_EQ(Entry(L"fjord.jpg")->thumbnail->GetHeight(), 448u);
    Choose(L"thumbnails.form.own");
    Click(L"thumbnails.reload");
    EXPECT_EQ(Entry(L"fjord.jpg")->thumbnail->GetWidth(), 480u);

    EvictEverything();
    Choose(L"thumbnails.form.doubled");
    const UINT width = Entry(L"fjord.jpg")->thumbnail->GetWidth();
    EXPECT_GT(width, 128u);
    EXPECT_LT(width, 384u);
}

TEST_F(ThumbnailsPageTest, ARotationSwapsTheSides)
{
    EXPECT_EQ(Entry(L"upright.jpg")->width, 240);
    Choose(L"thumbnails.rotation.90");
    Click(L"thumbnails.reload");
    EXPECT_EQ(Entry(L"upright.jpg")->width, 150);
    EXPECT_EQ(Entry(L"upright.jpg")->height, 240);
    Choose(L"thumbnails.rotation.180");
    Click(L"thumbnails.reload");
    EXPECT_EQ(Entry(L"upright.jpg")->width, 240);
}

TEST_F(ThumbnailsPageTest, AFileThatIsNoPictureHasAnIconInTheFirstFormOnly)
{
    EXPECT_FALSE(Entry(L"readme.txt")->loaded);
    const auto& grid = Placed<gallery::Canvas>(L"thumbnails.grid");
    const Picture withIcons = PictureOf(grid);
    EvictEverything();
    Choose(L"thumbnails.form.own");
    EXPECT_FALSE(PictureOf(grid) == withIcons);
}

TEST_F(DrawingPagesTest, PagesLeaveNoObject)
{
    for (const wchar_t* const name : kDrawingPages) {
        SCOPED_TRACE(test::Utf8(name));
        ExpectNoObject([this, name] {
            ShowPage(name);
            window.SetScale(150);
            Paint();
            window.SetScale(100);
            Paint();
            LeavePage();
        });
    }
}

} // namespace
