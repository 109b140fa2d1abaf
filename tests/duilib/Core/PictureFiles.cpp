#include "duilib/Core/PictureFiles.h"

#include <zlib.h>

#include <array>
#include <cstring>

namespace test {

namespace {

void AppendBig32(Bytes& bytes, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<unsigned char>(value >> shift));
}

void AppendLittle(Bytes& bytes, std::uint32_t value, int count)
{
    for (int index = 0; index < count; index++)
        bytes.push_back(static_cast<unsigned char>(value >> 8 * index));
}

void AppendChunk(Bytes& file, const char* name, const Bytes& content)
{
    AppendBig32(file, static_cast<std::uint32_t>(content.size()));
    const auto start = file.size();
    file.insert(file.end(), name, name + 4);
    file.insert(file.end(), content.begin(), content.end());
    const auto sum = ::crc32(0, file.data() + start, static_cast<uInt>(file.size() - start));
    AppendBig32(file, static_cast<std::uint32_t>(sum));
}

Bytes PngOf(const Picture& picture, bool alpha)
{
    Bytes rows;
    for (int y = 0; y < picture.Height(); y++) {
        rows.push_back(0);
        for (int x = 0; x < picture.Width(); x++) {
            const auto colour = picture.At(x, y).value;
            for (const int shift : {16, 8, 0})
                rows.push_back(static_cast<unsigned char>(colour >> shift));
            if (alpha)
                rows.push_back(static_cast<unsigned char>(colour >> 24));
        }
    }
    const PngForm form{.width = static_cast<unsigned>(picture.Width()),
                       .height = static_cast<unsigned>(picture.Height()),
                       .depth = 8,
                       .colourType = alpha ? 6 : 2};
    return Png(form, rows);
}

CLSID EncoderOf(const wchar_t* format)
{
    UINT count = 0;
    UINT size = 0;
    Gdiplus::GetImageEncodersSize(&count, &size);
    std::vector<std::byte> memory(size);
    auto* const encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(memory.data());
    Gdiplus::GetImageEncoders(count, size, encoders);
    for (UINT index = 0; index < count; index++) {
        if (std::wcscmp(encoders[index].MimeType, format) == 0)
            return encoders[index].Clsid;
    }
    ADD_FAILURE() << "no encoder";
    return {};
}

} // namespace

Bytes Png(const PngForm& form, const Bytes& rows, const Bytes& palette, const Bytes& transparency)
{
    Bytes file{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Bytes header;
    AppendBig32(header, form.width);
    AppendBig32(header, form.height);
    header.push_back(static_cast<unsigned char>(form.depth));
    header.push_back(static_cast<unsigned char>(form.colourType));
    header.insert(header.end(), 3, 0);
    AppendChunk(file, "IHDR", header);
    if (!palette.empty())
        AppendChunk(file, "PLTE", palette);
    if (!transparency.empty())
        AppendChunk(file, "tRNS", transparency);

    uLongf size = ::compressBound(static_cast<uLong>(rows.size()));
    Bytes packed(size);
    ::compress(packed.data(), &size, rows.data(), static_cast<uLong>(rows.size()));
    packed.resize(size);
    AppendChunk(file, "IDAT", packed);
    AppendChunk(file, "IEND", {});
    return file;
}

Bytes Png(const Picture& picture)
{
    return PngOf(picture, true);
}

Bytes OpaquePng(const Picture& picture)
{
    return PngOf(picture, false);
}

Bytes Bmp(const Picture& picture)
{
    constexpr int kHeaderBytes = 14 + 40;
    Bytes file{'B', 'M'};
    const auto stride = (picture.Width() * 3 + 3) / 4 * 4;
    AppendLittle(file, static_cast<std::uint32_t>(kHeaderBytes + stride * picture.Height()), 4);
    AppendLittle(file, 0, 4);
    AppendLittle(file, kHeaderBytes, 4);
    AppendLittle(file, 40, 4);
    AppendLittle(file, static_cast<std::uint32_t>(picture.Width()), 4);
    AppendLittle(file, static_cast<std::uint32_t>(picture.Height()), 4);
    AppendLittle(file, 1, 2);
    AppendLittle(file, 24, 2);
    for (int field = 0; field < 6; field++)
        AppendLittle(file, 0, 4);
    for (int y = picture.Height() - 1; y >= 0; y--) {
        for (int x = 0; x < picture.Width(); x++)
            AppendLittle(file, picture.At(x, y).value, 3);
        file.insert(file.end(), static_cast<std::size_t>(stride - picture.Width() * 3), 0);
    }
    return file;
}

Bytes Encoded(const Picture& picture, const wchar_t* format)
{
    Gdiplus::Bitmap bitmap(picture.Width(), picture.Height(), PixelFormat32bppARGB);
    for (int y = 0; y < picture.Height(); y++) {
        for (int x = 0; x < picture.Width(); x++)
            bitmap.SetPixel(x, y, Gdiplus::Color(picture.At(x, y).value));
    }
    IStream* stream = nullptr;
    ::CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    const auto encoder = EncoderOf(format);
    EXPECT_EQ(bitmap.Save(stream, &encoder, nullptr), Gdiplus::Ok);

    STATSTG state{};
    stream->Stat(&state, STATFLAG_NONAME);
    Bytes bytes(static_cast<std::size_t>(state.cbSize.QuadPart));
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    stream->Release();
    return bytes;
}

Bytes ToBytes(std::string_view text)
{
    return Bytes(text.begin(), text.end());
}

std::string SvgFile(int size, std::string_view content, std::string_view rootAttributes)
{
    const auto side = std::to_string(size);
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + side + "\" height=\"" + side +
           "\" viewBox=\"0 0 " + side + " " + side + "\" " + std::string(rootAttributes) + ">" +
           std::string(content) + "</svg>";
}

Argb PixelOf(const DuiLib::TImageInfo& image, int x, int y)
{
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, image.pBits + (static_cast<std::size_t>(y) * image.nX + x) * 4, 4);
    return Argb{pixel};
}

Picture PixelsOf(const DuiLib::TImageInfo& image)
{
    Picture picture(image.nX, image.nY);
    for (int y = 0; y < image.nY; y++) {
        for (int x = 0; x < image.nX; x++)
            picture.Set(x, y, PixelOf(image, x, y));
    }
    return picture;
}

ImageFilesTest::ImageFilesTest()
{
    DuiLib::CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    DuiLib::CPaintManagerUI::SetResourcePath(folder.Path().c_str());
}

void ImageFilesTest::Write(std::wstring_view name, const Bytes& bytes)
{
    folder.Write(name, std::span<const unsigned char>(bytes));
}

void ImageFilesTest::Write(std::wstring_view name, std::string_view text)
{
    folder.Write(name, text);
}

UniqueImage ImageFilesTest::Load(const wchar_t* name, DWORD mask)
{
    return UniqueImage(DuiLib::CRenderEngine::LoadImage(name, nullptr, mask));
}

std::wstring ImageFilesTest::LastError() const
{
    return DuiLib::CPaintManagerUI::GetLastErrorText().GetData();
}

Picture FourColours(int size)
{
    Picture picture(size, size);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            const bool right = x >= size / 2;
            const bool bottom = y >= size / 2;
            picture.Set(x, y, bottom ? right ? kYellow : kBlue : right ? kGreen : kRed);
        }
    }
    return picture;
}

} // namespace test
