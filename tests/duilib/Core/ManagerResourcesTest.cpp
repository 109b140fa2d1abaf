#include "duilib/Core/ManagerKit.h"
#include "support/ObjectCounters.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace DuiLib;
using test::ControlHost;
using test::TempFolder;

namespace {

HBITMAP NewBitmap()
{
    return ::CreateBitmap(4, 3, 1, 32, nullptr);
}

// One opaque red pixel.
std::string TinyBitmapFile(unsigned char blue, unsigned char green, unsigned char red)
{
    std::string file(58, '\0');
    file[0] = 'B';
    file[1] = 'M';
    file[2] = 58;
    file[10] = 54;
    file[14] = 40;
    file[18] = 1;
    file[22] = 1;
    file[26] = 1;
    file[28] = 24;
    file[34] = 4;
    file[54] = static_cast<char>(blue);
    file[55] = static_cast<char>(green);
    file[56] = static_cast<char>(red);
    return file;
}

class ManagerResourcesTest : public testing::Test {
protected:
    ManagerResourcesTest() { CPaintManagerUI::SetResourcePath(folder.Path().c_str()); }
    ~ManagerResourcesTest() override
    {
        for (auto* const each : {&manager}) {
            each->RemoveAllFonts(true);
            each->RemoveAllImages(true);
            each->RemoveAllStyle(true);
            each->RemoveAllDefaultAttributeList(true);
        }
        CPaintManagerUI::SetResourcePath(L"");
    }
    LOGFONTW Look(HFONT font) const
    {
        LOGFONTW look{};
        ::GetObjectW(font, sizeof(look), &look);
        return look;
    }

    TempFolder folder;
    ControlHost host{60, 40};
    CPaintManagerUI& manager = host.Manager();
};

TEST_F(ManagerResourcesTest, TheDefaultFontIsTheSystems)
{
    const LOGFONTW system = Look(static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT)));
    const TFontInfo& info = *manager.GetDefaultFontInfo();
    EXPECT_TRUE(info.sFontName == system.lfFaceName);
    EXPECT_EQ(info.iSize, std::abs(system.lfHeight));
    EXPECT_FALSE(info.bBold);
    EXPECT_GT(info.tm.tmHeight, 0);
    EXPECT_EQ(manager.GetFont(-1), info.hFont);
    EXPECT_EQ(manager.GetFont(77), info.hFont);
    EXPECT_EQ(manager.GetFontInfo(-1), &info);
}

TEST_F(ManagerResourcesTest, FontsHaveTheCellHeightOfTheirSize)
{
    const HFONT font = manager.AddFont(3, L"Arial", 20, true, true, true, true);
    ASSERT_NE(font, nullptr);
    EXPECT_EQ(manager.GetFont(3), font);
    const LOGFONTW look = Look(font);
    EXPECT_EQ(look.lfHeight, -20);
    EXPECT_EQ(look.lfWeight, FW_BOLD);
    EXPECT_TRUE(look.lfUnderline);
    EXPECT_TRUE(look.lfItalic);
    EXPECT_TRUE(look.lfStrikeOut);
    EXPECT_EQ(look.lfCharSet, DEFAULT_CHARSET);
    EXPECT_EQ(look.lfQuality, CLEARTYPE_QUALITY);
    EXPECT_STREQ(look.lfFaceName, L"Arial");
}

TEST_F(ManagerResourcesTest, FontsAreFoundByIdHandleAndLook)
{
    const HFONT font = manager.AddFont(3, L"Arial", 20, true, false, false, false);
    EXPECT_EQ(manager.GetFontIndex(font), 3);
    EXPECT_EQ(manager.GetFontIndex(L"Arial", 20, true, false, false, false), 3);
    EXPECT_EQ(manager.GetFontIndex(L"Arial", 21, true, false, false, false), -1);
    EXPECT_EQ(manager.GetFont(L"Arial", 20, true, false, false, false), font);
    EXPECT_EQ(manager.GetFont(L"Arial", 20, false, false, false, false), nullptr);
    EXPECT_EQ(manager.GetFontIndex(static_cast<HFONT>(nullptr)), -1);
    EXPECT_EQ(manager.GetFontInfo(font)->iSize, 20);
    EXPECT_GT(manager.GetFontInfo(font)->tm.tmHeight, 0);
}

TEST_F(ManagerResourcesTest, AddFontReplacesAnId)
{
    manager.AddFont(3, L"Arial", 20, true, false, false, false);
    manager.AddFont(3, L"Arial", 30, false, false, false, false);
    EXPECT_EQ(manager.GetCustomFontCount(), 1u);
    EXPECT_EQ(manager.GetFontInfo(3)->iSize, 30);
    EXPECT_EQ(manager.GetFontIndex(L"Arial", 20, true, false, false, false), -1);
    EXPECT_EQ(manager.AddFont(-1, L"Arial", 20, false, false, false, false), nullptr);
}

TEST_F(ManagerResourcesTest, TwoIdsMayHaveOneLook)
{
    manager.AddFont(1, L"Arial", 20, false, false, false, false);
    manager.AddFont(2, L"Arial", 20, false, false, false, false);
    manager.RemoveFont(1);
    EXPECT_EQ(manager.GetFontIndex(L"Arial", 20, false, false, false, false), 2);
}

TEST_F(ManagerResourcesTest, RemovedFontsGiveTheDefault)
{
    const HFONT byHandle = manager.AddFont(1, L"Arial", 20, false, false, false, false);
    manager.AddFont(2, L"Arial", 22, false, false, false, false);
    manager.RemoveFont(byHandle);
    EXPECT_EQ(manager.GetFont(1), manager.GetDefaultFontInfo()->hFont);
    manager.RemoveFont(2);
    EXPECT_EQ(manager.GetFont(2), manager.GetDefaultFontInfo()->hFont);
    manager.AddFont(3, L"Arial", 22, false, false, false, false);
    manager.RemoveAllFonts();
    EXPECT_EQ(manager.GetCustomFontCount(), 0u);
}

TEST_F(ManagerResourcesTest, SharedFontsServeEveryWindowAfterItsOwn)
{
    ControlHost other(20, 20);
    const HFONT shared = manager.AddFont(1, L"Arial", 20, false, false, false, false, true);
    EXPECT_EQ(other.Manager().GetFont(1), shared);
    EXPECT_EQ(manager.GetCustomFontCount(), 0u);
    EXPECT_EQ(manager.GetCustomFontCount(true), 1u);
    const HFONT own = other.Manager().AddFont(1, L"Arial", 24, false, false, false, false);
    EXPECT_EQ(other.Manager().GetFont(1), own);
    EXPECT_EQ(manager.GetFont(1), shared);
    EXPECT_EQ(manager.GetFontIndex(shared, true), 1);
    EXPECT_EQ(manager.GetFont(L"Arial", 20, false, false, false, false), shared);
}

TEST_F(ManagerResourcesTest, SetDefaultFontIsTheWindows)
{
    ControlHost other(20, 20);
    const TFontInfo* const before = other.Manager().GetDefaultFontInfo();
    manager.SetDefaultFont(L"Arial", 33, true, false, false, false);
    EXPECT_EQ(manager.GetDefaultFontInfo()->iSize, 33);
    EXPECT_TRUE(manager.GetDefaultFontInfo()->bBold);
    EXPECT_EQ(other.Manager().GetDefaultFontInfo(), before);
    EXPECT_EQ(Look(manager.GetFont(-1)).lfHeight, -33);
}

TEST_F(ManagerResourcesTest, FontsLeaveNoObjects)
{
    manager.GetDefaultFontInfo();
    const int objects = test::GdiObjects();
    for (int round = 0; round < 10; ++round) {
        for (int id = 0; id < 10; ++id)
            manager.AddFont(id, L"Arial", 10 + id, false, false, false, false);
    }
    EXPECT_EQ(test::GdiObjects(), objects + 10);
    manager.RemoveAllFonts();
    EXPECT_EQ(test::GdiObjects(), objects);
}

TEST_F(ManagerResourcesTest, AMissingFontFileIsReported)
{
    CPaintManagerUI::SetLastErrorText(L"");
    manager.AddFontArray(L"missing.ttf");
    EXPECT_NE(CPaintManagerUI::GetLastErrorText().Find(L"missing.ttf"), -1);
    folder.Write(L"bad.ttf", "no font");
    CPaintManagerUI::SetLastErrorText(L"");
    manager.AddFontArray(L"bad.ttf");
    EXPECT_NE(CPaintManagerUI::GetLastErrorText().Find(L"bad.ttf"), -1);
}

TEST_F(ManagerResourcesTest, ColoursFallBackToTheProcess)
{
    ControlHost other(20, 20);
    EXPECT_EQ(manager.GetDefaultDisabledColor(), 0xFFA7A6AAu);
    EXPECT_EQ(manager.GetDefaultFontColor(), 0xFF000000u);
    EXPECT_EQ(manager.GetDefaultLinkFontColor(), 0xFF0000FFu);
    EXPECT_EQ(manager.GetDefaultLinkHoverFontColor(), 0xFFD3215Fu);
    EXPECT_EQ(manager.GetDefaultSelectedBkColor(), 0xFFBAE4FFu);
    manager.SetDefaultFontColor(0xFF111111);
    manager.SetDefaultDisabledColor(0xFF222222);
    manager.SetDefaultLinkFontColor(0xFF333333);
    manager.SetDefaultLinkHoverFontColor(0xFF444444);
    manager.SetDefaultSelectedBkColor(0xFF555555);
    EXPECT_EQ(manager.GetDefaultFontColor(), 0xFF111111u);
    EXPECT_EQ(manager.GetDefaultDisabledColor(), 0xFF222222u);
    EXPECT_EQ(manager.GetDefaultLinkFontColor(), 0xFF333333u);
    EXPECT_EQ(manager.GetDefaultLinkHoverFontColor(), 0xFF444444u);
    EXPECT_EQ(manager.GetDefaultSelectedBkColor(), 0xFF555555u);
    EXPECT_EQ(other.Manager().GetDefaultFontColor(), 0xFF000000u);
    manager.SetDefaultFontColor(0xFF666666, true);
    EXPECT_EQ(other.Manager().GetDefaultFontColor(), 0xFF666666u);
    EXPECT_EQ(manager.GetDefaultFontColor(), 0xFF111111u);
    manager.SetDefaultFontColor(0xFF000000, true);
}

TEST_F(ManagerResourcesTest, PicturesAreLoadedOnceAndKept)
{
    folder.Write(L"red.bmp", TinyBitmapFile(0, 0, 255));
    EXPECT_EQ(manager.GetImage(L"red.bmp"), nullptr);
    const TImageInfo* const image = manager.GetImageEx(L"red.bmp");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->nX, 1);
    EXPECT_EQ(manager.GetImage(L"red.bmp"), image);
    EXPECT_EQ(manager.GetImageEx(L"red.bmp"), image);
    EXPECT_EQ(manager.AddImage(L"red.bmp"), image);
    EXPECT_EQ(manager.GetImageEx(L"red.bmp", nullptr, 0, false, nullptr, false), image);
    manager.RemoveImage(L"red.bmp");
    EXPECT_EQ(manager.GetImage(L"red.bmp"), nullptr);
}

TEST_F(ManagerResourcesTest, GetImageExTakesItsLastArgumentsInEitherOrder)
{
    const HINSTANCE program = ::GetModuleHandleW(nullptr);
    const HINSTANCE library = ::GetModuleHandleW(L"DuiLib.dll"); // has no such resource
    for (const bool gdiplus : {false, true}) {
        for (const bool libraryFirst : {false, true}) {
            SCOPED_TRACE(testing::PrintToString(gdiplus) + testing::PrintToString(libraryFirst));
            const auto get = [&](HINSTANCE module) {
                return libraryFirst ? manager.GetImageEx(L"103", L"PNG", 0, false, module, gdiplus)
                                    : manager.GetImageEx(L"103", L"PNG", 0, false, gdiplus, module);
            };
            EXPECT_EQ(get(library), nullptr);
            const TImageInfo* const image = get(program);
            ASSERT_NE(image, nullptr);
            EXPECT_EQ(image->pImage != nullptr, gdiplus);
            EXPECT_EQ(image->hBitmap == nullptr, gdiplus);
            manager.RemoveImage(L"103");
        }
    }
}

TEST_F(ManagerResourcesTest, AFailedLoadIsNotRemembered)
{
    EXPECT_EQ(manager.GetImageEx(L"late.bmp"), nullptr);
    EXPECT_EQ(manager.GetImageEx(L""), nullptr);
    EXPECT_EQ(manager.GetImageEx(nullptr), nullptr);
    folder.Write(L"late.bmp", TinyBitmapFile(0, 0, 255));
    EXPECT_NE(manager.GetImageEx(L"late.bmp"), nullptr);
}

TEST_F(ManagerResourcesTest, OwnPicturesComeBeforeShared)
{
    const TImageInfo* const shared = manager.AddImage(L"i", NewBitmap(), 4, 3, true, true);
    EXPECT_EQ(manager.GetImage(L"i"), shared);
    const TImageInfo* const own = manager.AddImage(L"i", NewBitmap(), 4, 3, false);
    EXPECT_EQ(manager.GetImage(L"i"), own);
    EXPECT_TRUE(shared->bAlpha);
    EXPECT_FALSE(own->bAlpha);
    EXPECT_EQ(own->nY, 3);
    manager.RemoveImage(L"i");
    EXPECT_EQ(manager.GetImage(L"i"), shared);
    manager.RemoveImage(L"i", true);
    EXPECT_EQ(manager.GetImage(L"i"), nullptr);
}

TEST_F(ManagerResourcesTest, AReplacedPictureStaysValidForItsHolders)
{
    const int objects = test::GdiObjects();
    const TImageInfo* const first = manager.AddImage(L"i", NewBitmap(), 4, 3, false);
    const TImageInfo* const second = manager.AddImage(L"i", NewBitmap(), 4, 3, false);
    EXPECT_EQ(manager.GetImage(L"i"), second);
    BITMAP size{};
    EXPECT_NE(::GetObjectW(first->hBitmap, sizeof(size), &size), 0);
    manager.RemoveImage(L"i");
    EXPECT_EQ(test::GdiObjects(), objects);
}

TEST_F(ManagerResourcesTest, RefusesPicturesThatAreNone)
{
    EXPECT_EQ(manager.AddImage(L"i", static_cast<HBITMAP>(nullptr), 4, 3, false), nullptr);
    EXPECT_EQ(manager.GetImage(L"i"), nullptr);
}

TEST_F(ManagerResourcesTest, ForcedSharingSharesEverything)
{
    ControlHost other(20, 20);
    EXPECT_FALSE(manager.IsForceUseSharedRes());
    manager.SetForceUseSharedRes(true);
    manager.AddFont(1, L"Arial", 20, false, false, false, false);
    manager.AddStyle(L"forced", L"text=\"a\"");
    manager.AddDefaultAttributeList(L"Forced", L"text=\"b\"");
    manager.AddImage(L"forced", NewBitmap(), 4, 3, false);
    EXPECT_EQ(manager.GetCustomFontCount(true), 1u);
    EXPECT_STREQ(other.Manager().GetStyle(L"forced"), L"text=\"a\"");
    EXPECT_STREQ(other.Manager().GetDefaultAttributeList(L"Forced"), L"text=\"b\"");
    EXPECT_NE(other.Manager().GetImage(L"forced"), nullptr);
}

TEST_F(ManagerResourcesTest, PicturesAreReloadedInPlace)
{
    folder.Write(L"c.bmp", TinyBitmapFile(0, 0, 255));
    const TImageInfo* const image = manager.GetImageEx(L"c.bmp");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image->pBits[2], 255);
    folder.Write(L"c.bmp", TinyBitmapFile(255, 0, 0));
    CPaintManagerUI::ReloadSkin();
    EXPECT_EQ(manager.GetImage(L"c.bmp"), image);
    EXPECT_EQ(image->pBits[0], 255);
    EXPECT_EQ(image->pBits[2], 0);
}

TEST_F(ManagerResourcesTest, ImageStringsAreParsedOnce)
{
    const TDrawInfo* const plain = manager.GetDrawInfo(L"a.png", nullptr);
    ASSERT_NE(plain, nullptr);
    EXPECT_TRUE(plain->sImageName == L"a.png");
    EXPECT_EQ(manager.GetDrawInfo(L"a.png", nullptr), plain);
    EXPECT_EQ(manager.GetDrawInfo(L"a.png", L""), plain);
    const TDrawInfo* const modified = manager.GetDrawInfo(L"a.png", L"fade='10'");
    EXPECT_NE(modified, plain);
    EXPECT_EQ(modified->uFade, 10u);
    EXPECT_EQ(manager.GetDrawInfo(L"a.png", L"fade='10'"), modified);
    EXPECT_NE(manager.GetDrawInfo(nullptr, nullptr), nullptr);
}

TEST_F(ManagerResourcesTest, AWarmImageStringAllocatesNothing)
{
    manager.GetDrawInfo(L"file='some longer name of a picture.png' source='0,0,1,1'", L"fade='10'");
    const int blocks = test::HeapBlocks();
    for (int round = 0; round < 100; ++round)
        manager.GetDrawInfo(L"file='some longer name of a picture.png' source='0,0,1,1'",
                            L"fade='10'");
    EXPECT_EQ(test::HeapBlocks(), blocks);
}

TEST_F(ManagerResourcesTest, ImageAndModifierAreKeptApart)
{
    const TDrawInfo* const first = manager.GetDrawInfo(L"ab", L"c");
    const TDrawInfo* const second = manager.GetDrawInfo(L"a", L"bc");
    EXPECT_NE(first, second);
    EXPECT_TRUE(first->sImageName == L"ab");
    EXPECT_TRUE(second->sImageName == L"a");
    manager.RemoveDrawInfo(L"ab", L"c");
    manager.RemoveDrawInfo(L"unknown", nullptr);
    manager.RemoveAllDrawInfos();
    EXPECT_TRUE(manager.GetDrawInfo(L"ab", L"c")->sImageName == L"ab");
}

TEST_F(ManagerResourcesTest, AnImageStringNamesItsPicture)
{
    folder.Write(L"red.bmp", TinyBitmapFile(0, 0, 255));
    const TImageInfo* const image = manager.GetImageString(L"file='red.bmp' fade='10'");
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(manager.GetImage(L"red.bmp"), image);
    EXPECT_EQ(manager.GetImageString(L"other.bmp", L"file='red.bmp'"), image);
    EXPECT_EQ(manager.GetImageString(L"none.bmp"), nullptr);
    EXPECT_EQ(manager.GetImageString(L""), nullptr);
}

TEST_F(ManagerResourcesTest, DefaultsAreExactAndOwnComesFirst)
{
    manager.AddDefaultAttributeList(L"Button", L"shared", true);
    EXPECT_STREQ(manager.GetDefaultAttributeList(L"Button"), L"shared");
    manager.AddDefaultAttributeList(L"Button", L"own");
    EXPECT_STREQ(manager.GetDefaultAttributeList(L"Button"), L"own");
    manager.AddDefaultAttributeList(L"Button", L"newer");
    EXPECT_STREQ(manager.GetDefaultAttributeList(L"Button"), L"newer");
    EXPECT_EQ(manager.GetDefaultAttributeList(L"button"), nullptr);
    EXPECT_TRUE(manager.RemoveDefaultAttributeList(L"Button"));
    EXPECT_FALSE(manager.RemoveDefaultAttributeList(L"Button"));
    EXPECT_STREQ(manager.GetDefaultAttributeList(L"Button"), L"shared");
    EXPECT_TRUE(manager.RemoveDefaultAttributeList(L"Button", true));
    EXPECT_EQ(manager.GetDefaultAttributeList(nullptr), nullptr);
}

TEST_F(ManagerResourcesTest, StylesAreNamedLists)
{
    manager.AddStyle(L"title", L"shared", true);
    manager.AddStyle(L"title", L"own");
    EXPECT_STREQ(manager.GetStyle(L"title"), L"own");
    EXPECT_EQ(manager.GetStyles().GetSize(), 1);
    EXPECT_STREQ(manager.GetStyles().GetAt(0), L"title");
    EXPECT_STREQ(static_cast<CDuiString*>(manager.GetStyles().Find(L"title"))->GetData(), L"own");
    EXPECT_TRUE(manager.RemoveStyle(L"title"));
    EXPECT_FALSE(manager.RemoveStyle(L"title"));
    EXPECT_STREQ(manager.GetStyle(L"title"), L"shared");
    manager.RemoveAllStyle(true);
    EXPECT_EQ(manager.GetStyle(L"title"), nullptr);
    EXPECT_EQ(manager.GetStyle(nullptr), nullptr);
}

TEST_F(ManagerResourcesTest, TheFirstValueOfAWindowAttributeStays)
{
    manager.AddWindowCustomAttribute(L"a", L"1");
    manager.AddWindowCustomAttribute(L"a", L"2");
    EXPECT_STREQ(manager.GetWindowCustomAttribute(L"a"), L"1");
    EXPECT_EQ(manager.GetWindowCustomAttribute(L"A"), nullptr);
    EXPECT_TRUE(manager.RemoveWindowCustomAttribute(L"a"));
    EXPECT_FALSE(manager.RemoveWindowCustomAttribute(L"a"));
    manager.AddWindowCustomAttribute(L"b", L"1");
    manager.RemoveAllWindowCustomAttribute();
    EXPECT_EQ(manager.GetWindowCustomAttribute(L"b"), nullptr);
}

TEST_F(ManagerResourcesTest, PathsGetATrailingBackslash)
{
    CPaintManagerUI::SetResourcePath(L"C:\\skins");
    EXPECT_STREQ(CPaintManagerUI::GetResourcePath(), L"C:\\skins\\");
    CPaintManagerUI::SetResourcePath(L"C:\\skins\\");
    EXPECT_STREQ(CPaintManagerUI::GetResourcePath(), L"C:\\skins\\");
    CPaintManagerUI::SetResourcePath(L"C:/skins/");
    EXPECT_STREQ(CPaintManagerUI::GetResourcePath(), L"C:/skins/");
    CPaintManagerUI::SetResourcePath(L"");
    EXPECT_STREQ(CPaintManagerUI::GetResourcePath(), L"");
    CPaintManagerUI::SetResourcePath(nullptr);
    EXPECT_STREQ(CPaintManagerUI::GetResourcePath(), L"");
    const CDuiString path = CPaintManagerUI::GetInstancePath();
    EXPECT_EQ(path.Right(1).GetAt(0), L'\\');
    EXPECT_NE(::GetFileAttributesW(path), INVALID_FILE_ATTRIBUTES);
}

TEST_F(ManagerResourcesTest, ModulesFallBackToTheApplication)
{
    EXPECT_EQ(CPaintManagerUI::GetInstance(), ::GetModuleHandleW(nullptr));
    EXPECT_EQ(CPaintManagerUI::GetResourceDll(), CPaintManagerUI::GetInstance());
    const HINSTANCE toolkit = ::GetModuleHandleW(L"DuiLib.dll");
    CPaintManagerUI::SetResourceDll(toolkit);
    EXPECT_EQ(CPaintManagerUI::GetResourceDll(), toolkit);
    CPaintManagerUI::SetResourceDll(nullptr);
    EXPECT_EQ(CPaintManagerUI::GetResourceType(), UILIB_FILE);
    CPaintManagerUI::SetResourceType(UILIB_ZIP);
    EXPECT_EQ(CPaintManagerUI::GetResourceType(), UILIB_ZIP);
    CPaintManagerUI::SetResourceType(UILIB_FILE);
}

TEST_F(ManagerResourcesTest, ArchiveSettingsAreRemembered)
{
    CPaintManagerUI::SetResourceZip(L"skin.zip", true, L"secret");
    EXPECT_STREQ(CPaintManagerUI::GetResourceZip(), L"skin.zip");
    EXPECT_STREQ(CPaintManagerUI::GetResourceZipPwd(), L"secret");
    EXPECT_TRUE(CPaintManagerUI::IsCachedResourceZip());
    EXPECT_EQ(CPaintManagerUI::GetResourceZipHandle(), nullptr);
    char bytes[] = "no archive";
    CPaintManagerUI::SetResourceZip(bytes, sizeof(bytes));
    EXPECT_FALSE(CPaintManagerUI::GetResourceZip().IsEmpty());
    CPaintManagerUI::SetResourceZip(nullptr);
    EXPECT_TRUE(CPaintManagerUI::GetResourceZip().IsEmpty());
}

TEST_F(ManagerResourcesTest, ColourShiftIsClampedAndNeutralAtTheStart)
{
    short hue = 0;
    short saturation = 0;
    short lightness = 0;
    EXPECT_FALSE(CPaintManagerUI::GetHSL(&hue, &saturation, &lightness));
    EXPECT_EQ(hue, 180);
    EXPECT_EQ(saturation, 100);
    EXPECT_EQ(lightness, 100);
    CPaintManagerUI::SetHSL(true, 500, -5, 300);
    EXPECT_TRUE(CPaintManagerUI::GetHSL(&hue, &saturation, nullptr));
    EXPECT_EQ(hue, 360);
    EXPECT_EQ(saturation, 0);
    CPaintManagerUI::SetHSL(false, 180, 100, 100);
    EXPECT_FALSE(CPaintManagerUI::GetHSL(nullptr, nullptr, nullptr));
}

TEST_F(ManagerResourcesTest, AColourShiftRecoloursWhatWasLoadedForIt)
{
    folder.Write(L"h.bmp", TinyBitmapFile(0, 0, 255));
    const TImageInfo* const shifted = manager.GetImageEx(L"h.bmp", nullptr, 0, true);
    ASSERT_NE(shifted, nullptr);
    EXPECT_EQ(shifted->pBits[2], 255);
    CPaintManagerUI::SetHSL(true, 300, 100, 100);
    EXPECT_NE(shifted->pBits[2], 255);
    CPaintManagerUI::SetHSL(false, 180, 100, 100);
    EXPECT_EQ(shifted->pBits[2], 255);
}

TEST_F(ManagerResourcesTest, APlugInThatIsNoneIsReported)
{
    CPaintManagerUI::SetLastErrorText(L"");
    EXPECT_FALSE(CPaintManagerUI::LoadPlugin(L"missing-plugin.dll"));
    EXPECT_NE(CPaintManagerUI::GetLastErrorText().Find(L"missing-plugin.dll"), -1);
    EXPECT_FALSE(CPaintManagerUI::LoadPlugin(L"DuiLib.dll"));
    EXPECT_FALSE(CPaintManagerUI::LoadPlugin(nullptr));
    EXPECT_EQ(CPaintManagerUI::GetPlugins()->GetSize(), 0);
}

TEST_F(ManagerResourcesTest, TheLastErrorTextIsTheLastOneSet)
{
    CPaintManagerUI::SetLastErrorText(L"reason");
    EXPECT_STREQ(CPaintManagerUI::GetLastErrorText(), L"reason");
    CPaintManagerUI::SetLastErrorText(nullptr);
    EXPECT_TRUE(CPaintManagerUI::GetLastErrorText().IsEmpty());
}

TEST_F(ManagerResourcesTest, TermReleasesWhatIsShared)
{
    manager.AddFont(1, L"Arial", 20, false, false, false, false, true);
    manager.AddStyle(L"s", L"a", true);
    manager.AddImage(L"i", NewBitmap(), 4, 3, false, true);
    CPaintManagerUI::Term();
    EXPECT_EQ(manager.GetCustomFontCount(true), 0u);
    EXPECT_EQ(manager.GetStyle(L"s"), nullptr);
    EXPECT_EQ(manager.GetImage(L"i"), nullptr);
    EXPECT_NE(manager.GetFont(-1), nullptr);
    host.Paint();
}

TEST_F(ManagerResourcesTest, RawMemoryIsFreed)
{
    const int blocks = test::HeapBlocks();
    manager.DeletePtr(::operator new(100));
    manager.DeletePtr(nullptr);
    EXPECT_EQ(test::HeapBlocks(), blocks);
}

} // namespace
