#include "gallery/Application.h"
#include "gallery/GalleryWindow.h"
#include "gallery/MonitorRules.h"
#include "gallery/Tour.h"
#include "support/ObjectCounters.h"
#include "support/TempFolder.h"
#include "tests/gallery/PageNames.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace DuiLib;

namespace {

constexpr int kRounds = 200;

void DispatchWhatIsQueued()
{
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        if (!CPaintManagerUI::TranslateMessage(&message))
            ::DispatchMessageW(&message);
}

struct Counts {
    int gdi = test::GdiObjects();
    int gdiplus = test::GdiplusObjects();
    int windows = test::UserWindows();

    bool operator==(const Counts&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Counts& counts)
{
    return out << counts.gdi << " GDI, " << counts.gdiplus << " GDI+, " << counts.windows
               << " windows";
}

class GalleryTest : public testing::Test {
protected:
    gallery::Application application;
};

void OpenAndClose()
{
    gallery::GalleryWindow window(gallery::GalleryWindow::AtClose::Nothing);
    ASSERT_TRUE(window.Open(true));
    ::UpdateWindow(window.GetHWND());
    DispatchWhatIsQueued();
    ::DestroyWindow(window.GetHWND());
    DispatchWhatIsQueued();
}

TEST_F(GalleryTest, OpeningAndClosingTheMainWindow200TimesLeavesNoObject)
{
    OpenAndClose();
    OpenAndClose();
    const Counts before;
    for (int i = 0; i < kRounds; ++i)
        OpenAndClose();
    EXPECT_EQ(Counts(), before);
}

class GalleryPageTest : public GalleryTest, public testing::WithParamInterface<std::size_t> {};

TEST_P(GalleryPageTest, ShowingThePage200TimesLeavesNoObject)
{
    gallery::GalleryWindow window(gallery::GalleryWindow::AtClose::Nothing);
    ASSERT_TRUE(window.Open(true));
    const auto& page = gallery::Pages()[GetParam()];
    const auto& other = gallery::Pages()[(GetParam() + 1) % gallery::Pages().size()];
    const auto showBoth = [&] {
        for (const auto* entry : {&page, &other}) {
            window.ShowPage(*entry);
            ::UpdateWindow(window.GetHWND());
            DispatchWhatIsQueued();
        }
    };
    showBoth();
    showBoth();
    const Counts before;
    for (int i = 0; i < kRounds; ++i)
        showBoth();
    EXPECT_EQ(Counts(), before);
    ::DestroyWindow(window.GetHWND());
}

INSTANTIATE_TEST_SUITE_P(AllPages, GalleryPageTest,
                         testing::Range<std::size_t>(0, gallery::Pages().size()),
                         [](const auto& test) { return test::NameOfPage(test.param); });

TEST_F(GalleryTest, TheTourFindsNothingWrongAndWritesAPictureOfEveryPageAtBothScales)
{
    const test::TempFolder folder;
    const auto result = gallery::TakeTour(folder.Path());
    for (const auto& problem : result.problems)
        ADD_FAILURE() << test::Utf8(problem);
    gallery::GalleryWindow window(gallery::GalleryWindow::AtClose::Nothing);
    int views = 0;
    for (const auto& page : gallery::Pages())
        views += 1 + page.make(window)->Scenes();
    EXPECT_EQ(result.pictures, views * 2 * 4) << "two scales, four languages";
    for (const auto& page : gallery::Pages())
        for (const wchar_t* scale : {L"-100-en-US.png", L"-150-en-US.png"})
            EXPECT_TRUE(std::filesystem::exists(folder / (std::wstring(page.name) + scale)));
}

TEST_F(GalleryTest, EveryLanguageFileHasTheSameTexts)
{
    const auto idsOf = [](const std::wstring& file) {
        std::vector<std::wstring> ids;
        CMarkup markup;
        EXPECT_TRUE(markup.LoadFromFile(file.c_str()));
        for (auto node = markup.GetRoot().GetChild(); node.IsValid(); node = node.GetSibling())
            ids.emplace_back(node.GetAttributeValue(L"id"));
        return ids;
    };
    for (const std::wstring folder : {L"languages/", L"common/languages/"}) {
        const auto english = idsOf(folder + L"en-US.xml");
        EXPECT_FALSE(english.empty());
        EXPECT_EQ(idsOf(folder + L"de-DE.xml"), english);
        EXPECT_EQ(idsOf(folder + L"zh-CN.xml"), english);
        EXPECT_EQ(idsOf(folder + L"th-TH.xml"), english);
    }
}

TEST_F(GalleryTest, ALinkInTheListOfPagesShowsItsPage)
{
    gallery::GalleryWindow window(gallery::GalleryWindow::AtClose::Nothing);
    ASSERT_TRUE(window.Open(false));
    auto* const option =
        static_cast<COptionUI*>(window.Manager().FindControl(L"page.rounded-button"));
    ASSERT_NE(option, nullptr);
    option->Activate();
    EXPECT_NE(window.Manager().FindControl(L"button.save"), nullptr);
    EXPECT_EQ(window.Manager().FindControl(L"switch.wifi"), nullptr);
    ::DestroyWindow(window.GetHWND());
}

TEST(UsableDpiTest, FollowsTheMonitorsSize)
{
    EXPECT_EQ(gallery::UsableDpi({1366, 768}, 144), 96u);
    EXPECT_EQ(gallery::UsableDpi({1920, 1080}, 144), 120u);
    EXPECT_EQ(gallery::UsableDpi({2560, 1440}, 192), 168u);
    EXPECT_EQ(gallery::UsableDpi({3840, 2160}, 288), 216u);
}

} // namespace
