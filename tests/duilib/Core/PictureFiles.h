#pragma once

#include <UIlib.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/Picture.h"
#include "support/TempFolder.h"

namespace test {

using Bytes = std::vector<unsigned char>;

// Picture files made byte by byte, so that no decoder takes part in its own test. The colours of a
// Picture are not multiplied by their alpha here.
Bytes Png(const Picture& picture);       // 8 bits, with alpha
Bytes OpaquePng(const Picture& picture); // 8 bits, without

// A PNG of any colour type, from raw rows that each begin with their filter byte.
struct PngForm {
    unsigned width;
    unsigned height;
    int depth;
    int colourType;
};
Bytes Png(const PngForm& form, const Bytes& rows, const Bytes& palette = {},
          const Bytes& transparency = {});

Bytes Bmp(const Picture& picture); // 24 bits, bottom row first

// What GDI+ encodes: L"image/jpeg", L"image/gif".
Bytes Encoded(const Picture& picture, const wchar_t* format);

Bytes ToBytes(std::string_view text);

// An SVG with the view box `0 0 size size` and that size.
std::string SvgFile(int size, std::string_view content, std::string_view rootAttributes = "");

struct FreeImageRecord {
    void operator()(DuiLib::TImageInfo* image) const { DuiLib::CRenderEngine::FreeImage(image); }
};
using UniqueImage = std::unique_ptr<DuiLib::TImageInfo, FreeImageRecord>;

// The pixel as it is stored: multiplied by its alpha.
Argb PixelOf(const DuiLib::TImageInfo& image, int x, int y);
Picture PixelsOf(const DuiLib::TImageInfo& image);

// Opaque colours for tests.
constexpr Argb kRed{0xFFFF0000};
constexpr Argb kGreen{0xFF00FF00};
constexpr Argb kBlue{0xFF0000FF};
constexpr Argb kYellow{0xFFFFFF00};
constexpr Argb kWhite{0xFFFFFFFF};
constexpr Argb kBlack{0xFF000000};
constexpr Argb kClear{0x00000000};

// A folder that is the resource path, and GDI+ started by a manager.
class ImageFilesTest : public testing::Test {
protected:
    ImageFilesTest();

    void Write(std::wstring_view name, const Bytes& bytes);
    void Write(std::wstring_view name, std::string_view text);
    UniqueImage Load(const wchar_t* name, DWORD mask = 0);
    std::wstring LastError() const;

    TempFolder folder;
    DuiLib::CPaintManagerUI manager;
};

// Four different quarters: red, green / blue, yellow.
Picture FourColours(int size);

} // namespace test
