#include <gtest/gtest.h>

#include "quillet/drawing/DrawingKit.h"
#include "quillet/quillet.h"
#include "support/FaultPlan.h"
#include "support/ImportHook.h"
#include "support/ObjectCounters.h"
#include "support/TempFolder.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace test {
namespace {

using namespace DuiLib;

constexpr Argb kGray{0xFF404040};

class ImageTest : public testing::Test {
protected:
    CPaintManagerUI manager; // starts GDI+
};

// A 32-bit bitmap with a colour for each pixel, top row first.
HBITMAP MakeDib(const Picture& picture)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture.Width();
    info.bmiHeader.biHeight = -picture.Height();
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const HBITMAP bitmap = ::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    auto* pixel = static_cast<std::uint32_t*>(bits);
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            *pixel++ = picture.At(x, y).value;
    return bitmap;
}

// What it shows, without the alpha.
Picture GdiPictureOf(HBITMAP bitmap)
{
    BITMAP size{};
    ::GetObjectW(bitmap, sizeof size, &size);
    Picture picture(size.bmWidth, size.bmHeight);
    const HDC dc = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ old = ::SelectObject(dc, bitmap);
    for (int y = 0; y < size.bmHeight; ++y) {
        for (int x = 0; x < size.bmWidth; ++x) {
            const COLORREF colour = ::GetPixel(dc, x, y);
            picture.Set(x, y,
                        Argb{0xFF000000u | GetRValue(colour) << 16 | GetGValue(colour) << 8 |
                             GetBValue(colour)});
        }
    }
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    return picture;
}

bool Exists(HBITMAP bitmap)
{
    BITMAP size{};
    return ::GetObjectW(bitmap, sizeof size, &size) != 0;
}

void ExpectEmpty(const UIImage& image)
{
    EXPECT_EQ(image.GetBitmap(), nullptr);
    EXPECT_EQ(image.GetHBITMAP(), nullptr);
    EXPECT_EQ(image.GetWidth(), 0);
    EXPECT_EQ(image.GetHeight(), 0);
    EXPECT_EQ(image.GetOpacity(), 100);
    EXPECT_EQ(image.GetBlur(), 0);
    EXPECT_EQ(image.GetBrightness(), 0);
}

TEST_F(ImageTest, HasNoPictureAtFirst)
{
    ExpectEmpty(UIImage());
    EXPECT_EQ(sizeof(UIImage), sizeof(void*));
}

TEST_F(ImageTest, OfASizeIsTransparent)
{
    const UIImage image(7, 5);
    EXPECT_EQ(image.GetWidth(), 7);
    EXPECT_EQ(image.GetHeight(), 5);
    EXPECT_EQ(image.GetHBITMAP(), nullptr);
    ASSERT_NE(image.GetBitmap(), nullptr);
    EXPECT_EQ(image.GetBitmap()->GetPixelFormat(), PixelFormat32bppARGB);
    EXPECT_EQ(PictureOf(*image.GetBitmap()), Picture(7, 5, Argb{0}));
    EXPECT_EQ(image.GetOpacity(), 100);
}

TEST_F(ImageTest, OfAGdiBitmapReportsNoSize)
{
    const HBITMAP bitmap = MakeDib(Quarters(6));
    const UIImage image(bitmap);
    EXPECT_EQ(image.GetHBITMAP(), bitmap);
    EXPECT_EQ(image.GetBitmap(), nullptr);
    EXPECT_EQ(image.GetWidth(), 0);
    EXPECT_EQ(image.GetHeight(), 0);
}

TEST_F(ImageTest, TakesAGdiplusBitmap)
{
    auto* const bitmap = new Gdiplus::Bitmap(9, 4, PixelFormat24bppRGB);
    const UIImage image(bitmap);
    EXPECT_EQ(image.GetBitmap(), bitmap);
    EXPECT_EQ(image.GetHBITMAP(), nullptr);
    EXPECT_EQ(image.GetWidth(), 9);
    EXPECT_EQ(image.GetHeight(), 4);
}

TEST_F(ImageTest, NullPicturesAreNone)
{
    ExpectEmpty(UIImage(static_cast<HBITMAP>(nullptr)));
    ExpectEmpty(UIImage(static_cast<Gdiplus::Bitmap*>(nullptr)));
}

// Ownership

TEST_F(ImageTest, FreesItsPicture)
{
    const auto use = [] {
        UIImage empty;
        UIImage sized(4, 4);
        UIImage gdi(MakeDib(Quarters(4)));
        UIImage taken(new Gdiplus::Bitmap(3, 3, PixelFormat32bppARGB));
    };
    GdiplusObjects();
    use();
    const int gdiplus = GdiplusObjects();
    const int gdi = GdiObjects();
    const int heap = HeapBlocks();
    for (int i = 0; i < 20; ++i)
        use();
    EXPECT_EQ(GdiplusObjects(), gdiplus);
    EXPECT_EQ(GdiObjects(), gdi);
    EXPECT_EQ(HeapBlocks(), heap);
}

TEST_F(ImageTest, LeavesItsPictureToTheCallerWhenTold)
{
    const HBITMAP bitmap = MakeDib(Quarters(4));
    const auto picture = std::make_unique<Gdiplus::Bitmap>(4, 4, PixelFormat32bppARGB);
    {
        UIImage gdi(bitmap);
        gdi.SetAutoDestroyResource(false);
        UIImage gdiplus(picture.get());
        gdiplus.SetAutoDestroyResource(false);
    }
    EXPECT_TRUE(Exists(bitmap));
    EXPECT_EQ(picture->GetWidth(), 4u);
    EXPECT_EQ(picture->GetLastStatus(), Gdiplus::Ok);
    {
        UIImage again(bitmap);
        again.SetAutoDestroyResource(false);
        again.SetAutoDestroyResource(true);
    }
    EXPECT_FALSE(Exists(bitmap));
}

// The caller sees to it that only one of them is destroyed.
TEST_F(ImageTest, CopiesShareOneRecord)
{
    GdiplusObjects();
    const int before = GdiplusObjects();
    {
        UIImage image(4, 4);
        Undestroyed<UIImage> copy(image);
        EXPECT_EQ(copy->GetBitmap(), image.GetBitmap());
        copy->SetOpacity(30);
        image.SetBlur(-7, false);
        EXPECT_EQ(image.GetOpacity(), 30);
        EXPECT_EQ(copy->GetBlur(), -7);

        const UIImage none;
        Undestroyed<UIImage> assigned(none); // shares with the one that stays
        *assigned = image;
        EXPECT_EQ(assigned->GetBitmap(), image.GetBitmap());
        assigned->SetOpacity(20);
        EXPECT_EQ(image.GetOpacity(), 20);
        EXPECT_EQ(none.GetOpacity(), 100);
    }
    EXPECT_EQ(GdiplusObjects(), before);
}

// Clones

TEST_F(ImageTest, CloneHasPixelsOfItsOwn)
{
    const auto image = ImageOf(Quarters(8));
    const std::unique_ptr<UIImage> clone(image->Clone());
    ASSERT_NE(clone, nullptr);
    ASSERT_NE(clone->GetBitmap(), nullptr);
    EXPECT_NE(clone->GetBitmap(), image->GetBitmap());
    EXPECT_EQ(PictureOf(*clone->GetBitmap()), Quarters(8));
    clone->GetBitmap()->SetPixel(0, 0, Gdiplus::Color(kGray.value));
    EXPECT_EQ(PictureOf(*image->GetBitmap()), Quarters(8));
}

TEST_F(ImageTest, CloneKeepsThePixelFormat)
{
    for (const auto format :
         {PixelFormat32bppARGB, PixelFormat32bppPARGB, PixelFormat32bppRGB, PixelFormat24bppRGB,
          PixelFormat8bppIndexed, PixelFormat4bppIndexed, PixelFormat1bppIndexed}) {
        SCOPED_TRACE(format);
        const UIImage image(new Gdiplus::Bitmap(13, 6, format));
        const std::unique_ptr<UIImage> clone(image.Clone());
        ASSERT_NE(clone->GetBitmap(), nullptr);
        EXPECT_EQ(clone->GetBitmap()->GetPixelFormat(), format);
        EXPECT_EQ(clone->GetWidth(), 13);
        EXPECT_EQ(clone->GetHeight(), 6);
    }
}

TEST_F(ImageTest, CloneTakesNoSettings)
{
    const HBITMAP bitmap = MakeDib(Quarters(4));
    const auto ends = [](UIImage& image) {
        image.SetOpacity(40);
        image.SetBlur(-5, true);
        image.SetAutoDestroyResource(false);
        const std::unique_ptr<UIImage> clone(image.Clone());
        EXPECT_EQ(clone->GetOpacity(), 100);
        EXPECT_EQ(clone->GetBlur(), 0);
        EXPECT_EQ(clone->GetBrightness(), 0);
        return clone->GetHBITMAP();
    };
    UIImage gdi(bitmap);
    EXPECT_FALSE(Exists(ends(gdi))) << "the clone owns its picture";
    UIImage empty;
    ends(empty);
    UIImage sized(3, 3);
    GdiplusObjects();
    const int before = GdiplusObjects();
    ends(sized);
    EXPECT_EQ(GdiplusObjects(), before) << "the clone owns its picture";
    gdi.SetAutoDestroyResource(true);
    sized.SetAutoDestroyResource(true);
}

TEST_F(ImageTest, CloneOfNothingIsNothing)
{
    const std::unique_ptr<UIImage> clone(UIImage().Clone());
    ASSERT_NE(clone, nullptr);
    ExpectEmpty(*clone);
}

TEST_F(ImageTest, CloneOfABrokenBitmapIsNothing)
{
    const UIImage image(new Gdiplus::Bitmap(L"no such file"));
    ASSERT_NE(image.GetBitmap(), nullptr);
    const std::unique_ptr<UIImage> clone(image.Clone());
    ASSERT_NE(clone, nullptr);
    ExpectEmpty(*clone);
    EXPECT_NE(image.GetBitmap()->GetLastStatus(), Gdiplus::Ok);
}

TEST_F(ImageTest, CloneOfAGdiBitmapIsADibSection)
{
    const UIImage image(MakeDib(Quarters(6)));
    const std::unique_ptr<UIImage> clone(image.Clone());
    ASSERT_NE(clone->GetHBITMAP(), nullptr);
    EXPECT_NE(clone->GetHBITMAP(), image.GetHBITMAP());
    EXPECT_EQ(clone->GetBitmap(), nullptr);
    EXPECT_EQ(GdiPictureOf(clone->GetHBITMAP()), Quarters(6));
    DIBSECTION section{};
    EXPECT_EQ(::GetObjectW(clone->GetHBITMAP(), sizeof section, &section),
              static_cast<int>(sizeof section));

    const HDC screen = ::GetDC(nullptr);
    const UIImage compatible(::CreateCompatibleBitmap(screen, 5, 4));
    ::ReleaseDC(nullptr, screen);
    EXPECT_NE(::GetObjectW(compatible.GetHBITMAP(), sizeof section, &section),
              static_cast<int>(sizeof section));
    const std::unique_ptr<UIImage> converted(compatible.Clone());
    EXPECT_EQ(::GetObjectW(converted->GetHBITMAP(), sizeof section, &section),
              static_cast<int>(sizeof section));
    EXPECT_EQ(section.dsBm.bmWidth, 5);
    EXPECT_EQ(section.dsBm.bmHeight, 4);
}

TEST_F(ImageTest, CloneOfADeletedGdiBitmapIsNothing)
{
    const HBITMAP bitmap = MakeDib(Quarters(4));
    UIImage image(bitmap);
    image.SetAutoDestroyResource(false);
    ::DeleteObject(bitmap);
    const std::unique_ptr<UIImage> clone(image.Clone());
    ASSERT_NE(clone, nullptr);
    ExpectEmpty(*clone);
}

HANDLE WINAPI RefuseCopy(HANDLE, UINT, int, int, UINT)
{
    return nullptr;
}

TEST_F(ImageTest, CloneOfAGdiBitmapThatCannotBeCopiedIsNothing)
{
    const UIImage image(MakeDib(Quarters(4)));
    const ImportHook hook(L"Quillet.dll", "USER32.dll", "CopyImage", &RefuseCopy);
    ASSERT_TRUE(hook);
    const std::unique_ptr<UIImage> clone(image.Clone());
    ASSERT_NE(clone, nullptr);
    ExpectEmpty(*clone);
}

TEST_F(ImageTest, CloneWithoutMemoryIsNullAndLosesNothing)
{
    const auto gdiplusImage = ImageOf(Quarters(4));
    const UIImage gdiImage(MakeDib(Quarters(4)));
    const UIImage none;
    GdiplusObjects();
    FaultPlan plan(Resource::Memory);
    for (const UIImage* const image :
         std::initializer_list<const UIImage*>{gdiplusImage.get(), &gdiImage, &none}) {
        plan.Start();
        delete image->Clone();
        const int requests = plan.Stop();
        ASSERT_GE(requests, 2);
        const int gdiplus = GdiplusObjects();
        const int gdi = GdiObjects();
        const int held = FaultPlan::HeldBlocks();
        for (int refused = 1; refused <= requests; ++refused) {
            plan.Start(refused);
            const std::unique_ptr<UIImage> clone(image->Clone());
            plan.Stop();
            EXPECT_EQ(clone, nullptr) << refused;
        }
        EXPECT_EQ(GdiplusObjects(), gdiplus);
        EXPECT_EQ(GdiObjects(), gdi);
        EXPECT_EQ(FaultPlan::HeldBlocks(), held);
    }
}

TEST_F(ImageTest, ClonesAreFreed)
{
    const auto gdiplusImage = ImageOf(Quarters(4));
    const UIImage gdiImage(MakeDib(Quarters(4)));
    const auto use = [&] {
        for (const UIImage* const image :
             std::initializer_list<const UIImage*>{gdiplusImage.get(), &gdiImage})
            delete image->Clone();
    };
    GdiplusObjects();
    use();
    const int gdiplus = GdiplusObjects();
    const int gdi = GdiObjects();
    for (int i = 0; i < 20; ++i)
        use();
    EXPECT_EQ(GdiplusObjects(), gdiplus);
    EXPECT_EQ(GdiObjects(), gdi);
}

// Settings

TEST_F(ImageTest, OpacityIsKeptAsItIs)
{
    UIImage image(2, 2);
    for (const int opacity : {0, 1, 99, 100, 101, 150, -1, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
        image.SetOpacity(opacity);
        EXPECT_EQ(image.GetOpacity(), opacity);
    }
    EXPECT_EQ(PictureOf(*image.GetBitmap()), Picture(2, 2, Argb{0}));
}

// Files

TEST_F(ImageTest, SavesAPng)
{
    const TempFolder folder;
    auto picture = Quarters(10);
    picture.Set(3, 3, Argb{0x80123456});
    const auto image = ImageOf(picture);
    image->Save(folder / L"picture.jpg");
    Gdiplus::Bitmap saved((folder / L"picture.jpg").c_str());
    ASSERT_EQ(saved.GetLastStatus(), Gdiplus::Ok);
    GUID format{};
    saved.GetRawFormat(&format);
    EXPECT_TRUE(format == Gdiplus::ImageFormatPNG);
    EXPECT_EQ(PictureOf(saved), picture);
}

TEST_F(ImageTest, SavesNothingWithoutGdiplusBitmap)
{
    const TempFolder folder;
    UIImage gdi(MakeDib(Quarters(4)));
    gdi.Save(folder / L"gdi.png");
    UIImage().Save(folder / L"empty.png");
    EXPECT_EQ(::GetFileAttributesW((folder / L"gdi.png").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(::GetFileAttributesW((folder / L"empty.png").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(ImageTest, SavingWhereNothingCanBeDoesNoHarm)
{
    const TempFolder folder;
    UIImage(2, 2).Save(folder / L"none\\picture.png");
    UIImage(2, 2).Save(L"");
}

// Effects

// Effects of a system that is made up: the calls are kept and nothing is drawn, so that the tests
// are the same whether this system has effects or not.
class FakeEffects {
public:
    struct Call {
        std::string function;
        GUID kind{};
        std::vector<BYTE> parameters{};
        void* bitmap = nullptr;
        void* effect = nullptr;
        void* memory = nullptr; // what is freed
        bool wholePicture = false;
        bool keepsAuxiliary = false;
    };
    static inline std::vector<Call> calls;
    static inline bool refuses = false;

    FakeEffects()
    {
        calls.clear();
        refuses = false;
        for (const ImportHook* const hook : {&m_create, &m_set, &m_apply, &m_delete, &m_free})
            EXPECT_TRUE(*hook);
        s_free = m_free.Original<decltype(Gdiplus::DllExports::GdipFree)>();
    }

    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const Call& call : calls)
            names.push_back(call.function);
        return names;
    }
    static void* Effect() { return &s_effect; }
    static void* Auxiliary() { return s_auxiliary; }

private:
    using Status = Gdiplus::GpStatus;

    static Status WINGDIPAPI Create(const GUID kind, Gdiplus::CGpEffect** effect)
    {
        calls.push_back({.function = "create", .kind = kind});
        *effect = refuses ? nullptr : static_cast<Gdiplus::CGpEffect*>(Effect());
        return refuses ? Gdiplus::NotImplemented : Gdiplus::Ok;
    }
    static Status WINGDIPAPI SetParameters(Gdiplus::CGpEffect* effect, const void* values,
                                           UINT size)
    {
        const auto* const bytes = static_cast<const BYTE*>(values);
        calls.push_back({.function = "set", .parameters = {bytes, bytes + size}, .effect = effect});
        return Gdiplus::Ok;
    }
    static Status WINGDIPAPI Apply(Gdiplus::GpBitmap* bitmap, Gdiplus::CGpEffect* effect,
                                   RECT* part, BOOL keep, void** auxiliary, INT* size)
    {
        calls.push_back({.function = "apply",
                         .bitmap = bitmap,
                         .effect = effect,
                         .wholePicture = part == nullptr,
                         .keepsAuxiliary = keep != FALSE});
        *auxiliary = s_auxiliary = Gdiplus::DllExports::GdipAlloc(8);
        *size = 8;
        return Gdiplus::Ok;
    }
    static Status WINGDIPAPI Delete(Gdiplus::CGpEffect* effect)
    {
        calls.push_back({.function = "delete", .effect = effect});
        return Gdiplus::Ok;
    }
    static void WINGDIPAPI Free(void* memory)
    {
        calls.push_back({.function = "free", .memory = memory});
        s_free(memory);
    }

    static inline int s_effect = 0;
    static inline void* s_auxiliary = nullptr;
    static inline decltype(Gdiplus::DllExports::GdipFree)* s_free = nullptr;

    ImportHook m_create{L"Quillet.dll", "gdiplus.dll", "GdipCreateEffect", &Create};
    ImportHook m_set{L"Quillet.dll", "gdiplus.dll", "GdipSetEffectParameters", &SetParameters};
    ImportHook m_apply{L"Quillet.dll", "gdiplus.dll", "GdipBitmapApplyEffect", &Apply};
    ImportHook m_delete{L"Quillet.dll", "gdiplus.dll", "GdipDeleteEffect", &Delete};
    ImportHook m_free{L"Quillet.dll", "gdiplus.dll", "GdipFree", &Free};
};

constexpr GUID kBlur{0x633C80A4, 0x1843, 0x482B, {0x9E, 0xF2, 0xBE, 0x28, 0x34, 0xC5, 0xFD, 0xD4}};
constexpr GUID kBrightnessContrast{
    0xD3A1DBE1, 0x8EC4, 0x4C17, {0x9F, 0x4C, 0xEA, 0x97, 0xAD, 0x1C, 0x34, 0x3D}};

// The parameters as they lie in memory: two values of four bytes.
template <class First>
std::vector<BYTE> Bytes(First first, std::int32_t second)
{
    static_assert(sizeof first == 4);
    std::vector<BYTE> bytes(8);
    std::memcpy(bytes.data(), &first, 4);
    std::memcpy(bytes.data() + 4, &second, 4);
    return bytes;
}

const std::vector<std::string> kOneEffect{"create", "set", "apply", "free", "delete"};

void ExpectOneEffect(const FakeEffects& effects, const GUID& kind, const std::vector<BYTE>& values)
{
    ASSERT_EQ(effects.Names(), kOneEffect);
    EXPECT_TRUE(effects.calls[0].kind == kind);
    EXPECT_EQ(effects.calls[1].parameters, values);
    EXPECT_TRUE(effects.calls[2].wholePicture);
    EXPECT_FALSE(effects.calls[2].keepsAuxiliary);
    EXPECT_EQ(effects.calls[3].memory, effects.Auxiliary());
    for (const int call : {1, 2, 4})
        EXPECT_EQ(effects.calls[static_cast<std::size_t>(call)].effect, effects.Effect());
}

TEST_F(ImageTest, BlursByAPercentageOf255)
{
    UIImage image(4, 4);
    struct Row {
        int percent;
        bool expand;
        float radius;
    };
    for (const auto& [percent, expand, radius] :
         {Row{1, false, 2.55f}, Row{30, true, 76.5f}, Row{5, false, 12.75f}, Row{100, true, 255.0f},
          Row{33, false, 84.15f}, Row{200, true, 510.0f}}) {
        SCOPED_TRACE(percent);
        FakeEffects effects;
        image.SetBlur(percent, expand);
        EXPECT_EQ(image.GetBlur(), percent);
        ExpectOneEffect(effects, kBlur, Bytes(radius, expand));
    }
}

TEST_F(ImageTest, BrightensWithoutContrast)
{
    UIImage image(4, 4);
    for (const int level : {1, 30, 255, 1000}) {
        SCOPED_TRACE(level);
        FakeEffects effects;
        image.SetBrightness(level);
        ExpectOneEffect(effects, kBrightnessContrast, Bytes(level, 0));
    }
}

// The setter stores it for a blur only.
TEST_F(ImageTest, BrightnessIsNeverStored)
{
    FakeEffects effects;
    UIImage image(4, 4);
    image.SetBrightness(30);
    EXPECT_EQ(image.GetBrightness(), 0);
    image.SetBlur(30, false);
    EXPECT_EQ(image.GetBlur(), 30);
    EXPECT_EQ(image.GetBrightness(), 0);
}

TEST_F(ImageTest, BrightensOnly)
{
    FakeEffects effects;
    UIImage image(4, 4);
    for (const int level : {0, -1, -30, -255})
        image.SetBrightness(level);
    EXPECT_EQ(effects.Names(), std::vector<std::string>{});
    EXPECT_EQ(image.GetBrightness(), 0);
}

TEST_F(ImageTest, BlurOfNothingOrLessIsOnlyStored)
{
    FakeEffects effects;
    UIImage image(4, 4);
    for (const int percent : {0, -1, -100}) {
        image.SetBlur(percent, true);
        EXPECT_EQ(image.GetBlur(), percent);
    }
    EXPECT_EQ(effects.Names(), std::vector<std::string>{});
}

TEST_F(ImageTest, EffectsAccumulate)
{
    UIImage image(4, 4);
    FakeEffects effects;
    image.SetBlur(5, false);
    image.SetBlur(5, false);
    image.SetBrightness(5);
    image.SetBrightness(5);
    auto four = kOneEffect;
    for (int i = 0; i < 3; ++i)
        four.insert(four.end(), kOneEffect.begin(), kOneEffect.end());
    EXPECT_EQ(effects.Names(), four);
    for (std::size_t i = 2; i < four.size(); i += kOneEffect.size())
        EXPECT_EQ(effects.calls[i].bitmap, effects.calls[2].bitmap);
}

TEST_F(ImageTest, EffectsNeedAGdiplusBitmap)
{
    UIImage empty;
    UIImage gdi(MakeDib(Quarters(4)));
    FakeEffects effects;
    for (UIImage* const image : {&empty, &gdi}) {
        image->SetBlur(40, true);
        image->SetBrightness(40);
        EXPECT_EQ(image->GetBlur(), 40);
        EXPECT_EQ(image->GetBrightness(), 0);
    }
    EXPECT_EQ(effects.Names(), std::vector<std::string>{});
}

TEST_F(ImageTest, AnEffectThatCannotBeMadeIsNotApplied)
{
    UIImage image(4, 4);
    FakeEffects effects;
    FakeEffects::refuses = true;
    image.SetBlur(40, true);
    image.SetBrightness(40);
    EXPECT_EQ(effects.Names(), (std::vector<std::string>{"create", "create"}));
    EXPECT_EQ(image.GetBlur(), 40);
}

// Without a fake: a system without effects leaves the pixels as they are.
TEST_F(ImageTest, BrightensThePixelsWhereTheSystemCan)
{
    Gdiplus::CGpEffect* probe = nullptr;
    const bool can =
        Gdiplus::DllExports::GdipCreateEffect(kBrightnessContrast, &probe) == Gdiplus::Ok;
    if (can)
        Gdiplus::DllExports::GdipDeleteEffect(probe);
    const auto image = ImageOf(Picture(6, 6, kGray));
    image->SetBrightness(50);
    const Argb once = PictureOf(*image->GetBitmap()).At(3, 3);
    image->SetBrightness(50);
    const Argb twice = PictureOf(*image->GetBitmap()).At(3, 3);
    if (can) {
        EXPECT_GT(once.value, kGray.value);
        EXPECT_GT(twice.value, once.value);
    } else {
        EXPECT_EQ(twice, kGray);
    }
    image->SetBlur(1, false);
    EXPECT_EQ(PictureOf(*image->GetBitmap()).At(3, 3), twice) << "a plain picture stays plain";
}

} // namespace
} // namespace test
