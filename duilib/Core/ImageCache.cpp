#include "Core/ImageCache.h"

#include <algorithm>
#include <atomic>
#include <cwctype>
#include <memory>
#include <mutex>
#include <new>
#include <set>
#include <unordered_map>

#include "Core/Diagnostics.h"
#include "Core/ImageDecoder.h"
#include "Core/ResourceLoader.h"
#include "Core/UIManager.h"
#include "Core/UIRender.h"
#include "Core/UIResourceManager.h"
#include "win32/GdiPlus.h"

namespace DuiLib {

namespace {

struct FreeRecord {
    void operator()(TImageInfo* image) const { CRenderEngine::FreeImage(image); }
};

using UniqueRecord = std::unique_ptr<TImageInfo, FreeRecord>;

// A picture that GDI+ draws, from pixels that were decoded otherwise.
std::unique_ptr<Gdiplus::Image> CopyToGdiplus(const DecodedPicture& picture)
{
    auto copy =
        std::make_unique<Gdiplus::Bitmap>(picture.width, picture.height, PixelFormat32bppPARGB);
    const Gdiplus::Rect all(0, 0, picture.width, picture.height);
    Gdiplus::BitmapData pixels{};
    pixels.Width = static_cast<UINT>(picture.width);
    pixels.Height = static_cast<UINT>(picture.height);
    pixels.Stride = picture.width * 4;
    pixels.PixelFormat = PixelFormat32bppPARGB;
    pixels.Scan0 = picture.bits;
    const auto status =
        copy->LockBits(&all, Gdiplus::ImageLockModeWrite | Gdiplus::ImageLockModeUserInputBuf,
                       PixelFormat32bppPARGB, &pixels);
    if (status != Gdiplus::Ok || copy->UnlockBits(&pixels) != Gdiplus::Ok)
        return nullptr;
    return copy;
}

// The GDI+ form keeps all frames, unless pixels must be changed or GDI+ does not know the format.
bool DecodeForGdiplus(const std::vector<BYTE>& bytes, const ImageRequest& request,
                      TImageInfo& record, ImageLoad& load)
{
    load.failure = CheckHeaderSize(bytes);
    if (!load.failure.empty())
        return false;
    if (request.mask == 0 && !bytes.empty() && !IsMarkup(bytes)) {
        if (auto image = DecodeGdiplusImage(bytes)) {
            record.nX = static_cast<int>(image->GetWidth());
            record.nY = static_cast<int>(image->GetHeight());
            record.bAlpha = (image->GetFlags() & Gdiplus::ImageFlagsHasAlpha) != 0;
            record.pImage = image.release();
            return true;
        }
    }

    const auto picture = DecodePicture(bytes, request.mask, request.scale, load.failure);
    if (picture.bitmap == nullptr)
        return false;
    auto image = CopyToGdiplus(picture);
    if (image == nullptr) {
        load.failure = L"not enough memory for the picture";
        return false;
    }
    record.nX = picture.width;
    record.nY = picture.height;
    record.bAlpha = picture.alpha;
    record.pImage = image.release();
    load.scalable = picture.scalable;
    return true;
}

bool Decode(const std::vector<BYTE>& bytes, const ImageRequest& request, TImageInfo& record,
            ImageLoad& load)
{
    if (request.gdiplus)
        return DecodeForGdiplus(bytes, request, record, load);

    auto picture = DecodePicture(bytes, request.mask, request.scale, load.failure);
    if (picture.bitmap == nullptr)
        return false;
    record.nX = picture.width;
    record.nY = picture.height;
    record.bAlpha = picture.alpha;
    record.pBits = picture.bits;
    record.hBitmap = picture.bitmap.release();
    load.scalable = picture.scalable;
    return true;
}

std::wstring NameForReader(STRINGorID name)
{
    if (name.m_lpstr == nullptr || IS_INTRESOURCE(name.m_lpstr))
        return L"resource " + std::to_wstring(reinterpret_cast<ULONG_PTR>(name.m_lpstr));
    return name.m_lpstr;
}

// A resource type as a text, which FindResource reads too.
std::wstring TypeText(LPCTSTR type)
{
    if (type == nullptr)
        return {};
    return IS_INTRESOURCE(type) ? L"#" + std::to_wstring(reinterpret_cast<ULONG_PTR>(type)) : type;
}

// A picture as it was asked for.
struct ImageSource {
    std::wstring name;
    std::wstring type;
    DWORD mask = 0;
    bool useHSL = false;
    bool gdiplus = false;
    HINSTANCE module = nullptr;

    // The file that the name stands for.
    static std::wstring Mapped(const std::wstring& name, const std::wstring& type)
    {
        if (type.empty()) {
            if (LPCTSTR path = CResourceManager::GetInstance()->GetImagePath(name.c_str()))
                return path;
        }
        return name;
    }

    // Differs for whatever may be another picture.
    std::wstring Key() const
    {
        constexpr wchar_t kEnd = L'\0';
        std::wstring key;
        key += CPaintManagerUI::GetResourcePath().GetData();
        key += kEnd;
        key += CPaintManagerUI::GetResourceZip().GetData();
        key += kEnd;
        key += name;
        key += kEnd;
        key += Mapped(name, type);
        key += kEnd;
        key += type;
        key += kEnd;
        for (const auto part :
             {reinterpret_cast<std::uintptr_t>(ResourceZipHandle()),
              reinterpret_cast<std::uintptr_t>(module),
              reinterpret_cast<std::uintptr_t>(
                  module == nullptr && !type.empty() ? CPaintManagerUI::GetResourceDll() : nullptr),
              std::uintptr_t{mask}}) {
            key += std::to_wstring(part);
            key += kEnd;
        }
        key += useHSL ? L'h' : L'-';
        key += gdiplus ? L'g' : L'-';
        return key;
    }

    ImageLoad Load(const std::wstring& wanted, int scale) const
    {
        const auto mapped = Mapped(wanted, type);
        return LoadImageRecord({.name = STRINGorID(mapped.c_str()),
                                .type = type.empty() ? nullptr : type.c_str(),
                                .mask = mask,
                                .module = module,
                                .scale = scale,
                                .gdiplus = gdiplus});
    }
};

struct LoadedImage {
    UniqueRecord record;
    int scale = 100;
};

// The colours as they are now become the ones that every change of hue starts from.
void KeepOriginalColours(TImageInfo& record)
{
    record.bUseHSL = true;
    if (record.pBits == nullptr)
        return;
    const auto size = std::size_t{4} * record.nX * record.nY;
    record.pSrcBits = new BYTE[size];
    std::copy_n(record.pBits, size, record.pSrcBits);

    short hue = 0;
    short saturation = 0;
    short lightness = 0;
    if (CPaintManagerUI::GetHSL(&hue, &saturation, &lightness))
        CRenderEngine::AdjustImage(true, &record, hue, saturation, lightness);
}

LoadedImage LoadFromSource(const ImageSource& source)
{
    LoadedImage loaded;
    auto load = source.Load(source.name, 100);
    PlainImageName plain;
    if (load.image == nullptr && SplitScaledImageName(source.name, plain)) {
        // A picture for this very scale that is damaged is worth a line, even if the other one
        // stands in.
        if (load.found)
            ReportImageFailure(load.failure);
        load = source.Load(plain.name, plain.scale);
        if (load.scalable)
            loaded.scale = plain.scale;
    }
    loaded.record.reset(load.image);
    if (load.image == nullptr) {
        ReportImageFailure(load.failure);
        return {};
    }
    if (source.useHSL)
        KeepOriginalColours(*load.image);
    return loaded;
}

class Cache {
public:
    // Never destroyed: at the end of the process GDI+ may be gone before the pictures.
    static Cache& Instance()
    {
        static auto* const cache = new Cache;
        return *cache;
    }

    const TImageInfo* Acquire(ImageSource source)
    {
        const auto key = source.Key();
        if (const auto* image = FindAndCount(key))
            return image;

        // Decoded without the lock: whoever is first with the same picture provides it.
        auto loaded = LoadFromSource(source);
        if (loaded.record == nullptr)
            return nullptr;
        const std::lock_guard lock(m_mutex);
        if (const auto found = m_byKey.find(key); found != m_byKey.end()) {
            found->second->references++;
            return found->second->image.record.get();
        }
        auto entry = std::make_unique<Entry>(
            Entry{.image = std::move(loaded), .source = std::move(source), .key = key});
        const TImageInfo* const record = entry->image.record.get();
        const bool isScaled = entry->image.scale != 100;
        const auto place = m_byRecord.emplace(record, std::move(entry)).first;
        try {
            m_byKey.emplace(key, place->second.get());
        } catch (const std::bad_alloc&) {
            m_byRecord.erase(place);
            throw;
        }
        m_scaled += isScaled;
        return record;
    }

    bool Release(const TImageInfo* image)
    {
        std::unique_ptr<Entry> last; // freed after the lock
        const std::lock_guard lock(m_mutex);
        const auto found = m_byRecord.find(image);
        if (found == m_byRecord.end())
            return false;
        if (--found->second->references == 0) {
            last = std::move(found->second);
            m_byRecord.erase(found);
            ForgetKey(*last);
            if (last->image.scale != 100)
                m_scaled--;
        }
        return true;
    }

    bool Reload(const TImageInfo* image)
    {
        ImageSource source;
        {
            const std::lock_guard lock(m_mutex);
            const auto found = m_byRecord.find(image);
            if (found == m_byRecord.end())
                return false;
            source = found->second->source;
        }
        auto loaded = LoadFromSource(source);
        if (loaded.record == nullptr)
            return false;

        const std::lock_guard lock(m_mutex);
        const auto found = m_byRecord.find(image);
        if (found == m_byRecord.end())
            return false;
        auto& entry = *found->second;
        std::swap(*entry.image.record, *loaded.record);
        m_scaled += (loaded.scale != 100) - (entry.image.scale != 100);
        entry.image.scale = loaded.scale;

        // The resource path may be another one than it was.
        ForgetKey(entry);
        entry.key = source.Key();
        m_byKey.try_emplace(entry.key, &entry);
        return true;
    }

    int ScaleOf(const TImageInfo* image)
    {
        if (m_scaled == 0)
            return 100;
        const std::lock_guard lock(m_mutex);
        const auto found = m_byRecord.find(image);
        return found == m_byRecord.end() ? 100 : found->second->image.scale;
    }

    std::size_t Count()
    {
        const std::lock_guard lock(m_mutex);
        return m_byRecord.size();
    }

private:
    struct Entry {
        LoadedImage image;
        ImageSource source;
        std::wstring key;
        int references = 1;
    };

    const TImageInfo* FindAndCount(const std::wstring& key)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_byKey.find(key);
        if (found == m_byKey.end())
            return nullptr;
        found->second->references++;
        return found->second->image.record.get();
    }

    // After a reload two entries may have one key; only one of them is found by it.
    void ForgetKey(const Entry& entry)
    {
        const auto found = m_byKey.find(entry.key);
        if (found != m_byKey.end() && found->second == &entry)
            m_byKey.erase(found);
    }

    std::mutex m_mutex;
    std::unordered_map<std::wstring, Entry*> m_byKey;
    std::unordered_map<const TImageInfo*, std::unique_ptr<Entry>> m_byRecord;
    std::atomic<int> m_scaled{0};
};

} // namespace

const TImageInfo* ImageCache::Acquire(LPCTSTR name, LPCTSTR type, DWORD mask, bool useHSL,
                                      bool gdiplus, HINSTANCE module)
{
    if (name == nullptr || IS_INTRESOURCE(name) || *name == 0)
        return nullptr;
    return Cache::Instance().Acquire({.name = name,
                                      .type = TypeText(type),
                                      .mask = mask,
                                      .useHSL = useHSL,
                                      .gdiplus = gdiplus,
                                      .module = module});
}

bool ImageCache::Release(const TImageInfo* image)
{
    return Cache::Instance().Release(image);
}

bool ImageCache::Reload(const TImageInfo* image)
{
    return Cache::Instance().Reload(image);
}

int ImageCache::ScaleOf(const TImageInfo* image)
{
    return Cache::Instance().ScaleOf(image);
}

std::size_t ImageCache::Count()
{
    return Cache::Instance().Count();
}

std::wstring ScaledImageName(std::wstring_view name, int scale)
{
    std::wstring scaled(name);
    const auto dot = scaled.rfind(L'.');
    if (scale != 100 && dot != scaled.npos)
        scaled.insert(dot, L"@" + std::to_wstring(scale));
    return scaled;
}

bool SplitScaledImageName(std::wstring_view name, PlainImageName& plain)
{
    const auto at = name.rfind(L'@');
    const auto dot = name.rfind(L'.');
    if (at == name.npos || dot == name.npos || dot < at)
        return false;

    constexpr int kLargestScale = 1000;
    const std::wstring scale(name.substr(at + 1, dot - at - 1));
    const bool number =
        !scale.empty() && scale.size() <= 4 &&
        std::ranges::all_of(scale, [](wchar_t digit) { return digit >= L'0' && digit <= L'9'; });
    const int percent = number ? _wtoi(scale.c_str()) : 0;
    plain.name = std::wstring(name.substr(0, at)) + std::wstring(name.substr(dot));
    plain.scale = percent > 0 && percent <= kLargestScale ? percent : 100;
    return true;
}

ImageLoad LoadImageRecord(const ImageRequest& request)
{
    ImageLoad load;
    const auto bytes =
        LoadResourceBytes(request.name, request.type, request.module, ResourceFallback::PlainPath,
                          kLargestResource, &load.failure);
    if (!bytes) {
        load.failure = FailureAt(NameForReader(request.name), 0, 0, load.failure);
        return load;
    }

    load.found = true;
    UniqueRecord record(new TImageInfo);
    if (!Decode(*bytes, request, *record, load)) {
        load.failure = FailureAt(NameForReader(request.name), 0, 0, load.failure);
        return load;
    }
    record->sResType = TypeText(request.type).c_str();
    record->dwMask = request.mask;
    load.failure.clear();
    load.image = record.release();
    return load;
}

void ReportImageFailure(const std::wstring& failure)
{
    // A picture that does not load is tried again by every paint, so each reason is a line only
    // once; the bound is for applications that make up names.
    constexpr std::size_t kMostRemembered = 64;
    struct Reported {
        std::mutex mutex;
        std::set<std::wstring, std::less<>> failures;
    };
    static auto* const reported = new Reported;

    {
        const std::lock_guard lock(reported->mutex);
        if (reported->failures.contains(failure)) {
            SetLastFailure(failure);
            return;
        }
        if (reported->failures.size() == kMostRemembered)
            reported->failures.clear();
        reported->failures.insert(failure);
    }
    ReportFailure(failure);
}

} // namespace DuiLib
