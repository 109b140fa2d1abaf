#include "gallery/Canvas.h"
#include "gallery/pages/Pages.h"

#include "win32/Handles.h"

#include <algorithm>
#include <cwctype>
#include <string>
#include <unordered_map>
#include <vector>

namespace gallery {

namespace {

using namespace DuiLib;

constexpr int kColumns = 8;
constexpr int kOtherSpellings = 201; // as many as the cache holds
constexpr int kSmallFont = 2;
constexpr DWORD kTextColour = 0xFF1F2933;
constexpr DWORD kFaintColour = 0xFF829AB1;
constexpr DWORD kFaultColour = 0xFFE5484D;
constexpr int kIconSize = 32; // design pixels

enum class Form { Small, Doubled, Own, LargeTip };

struct FormOption {
    const wchar_t* option;
    Form form;
};
constexpr FormOption kForms[] = {{L"thumbnails.form.small", Form::Small},
                                 {L"thumbnails.form.doubled", Form::Doubled},
                                 {L"thumbnails.form.own", Form::Own},
                                 {L"thumbnails.form.tip", Form::LargeTip}};

struct RotationOption {
    const wchar_t* option;
    int degrees;
};
constexpr RotationOption kRotations[] = {{L"thumbnails.rotation.0", 0},
                                         {L"thumbnails.rotation.90", 90},
                                         {L"thumbnails.rotation.180", 180},
                                         {L"thumbnails.rotation.270", 270}};

std::size_t StartOfName(const std::wstring& path)
{
    return path.find_last_of(L"\\/") + 1;
}

std::wstring Sized(int width, int height)
{
    return std::to_wstring(width) + L" × " + std::to_wstring(height);
}

// The largest rectangle of that shape in the middle of a place.
RECT Fit(int width, int height, const RECT& place)
{
    const int roomX = place.right - place.left;
    const int roomY = place.bottom - place.top;
    int fitX = roomX;
    int fitY = width > 0 ? static_cast<int>(static_cast<long long>(roomX) * height / width) : 0;
    if (fitY > roomY) {
        fitX = static_cast<int>(static_cast<long long>(roomY) * width / height);
        fitY = roomY;
    }
    const int left = place.left + (roomX - fitX) / 2;
    const int top = place.top + (roomY - fitY) / 2;
    return {left, top, left + fitX, top + fitY};
}

// Asks the cache and counts what becomes of the requests. The cache tells nothing about itself, but
// as long as a thumbnail is in it, its entry, its picture and its place in the order of use stay
// where they are. So an answer with the same three addresses as the last one for that path is a
// hit, any other a load; and a load of a path that was answered before, and that nobody asked to
// reload, means that it was evicted in between.
class CountedQueue {
public:
    struct Counts {
        int requests = 0;
        int hits = 0;
        int loads = 0;
        int evictions = 0;
    };

    ThumbnailData* Ask(const std::wstring& path, Form form, SIZE size, int rotation, bool reload)
    {
        m_counts.requests++;
        ThumbnailData* const answer = AskQueue(path.c_str(), form, size, rotation, reload);
        if (answer)
            Count(path, *answer, reload);
        return answer;
    }

    const Counts& Counted() const { return m_counts; }

private:
    struct Addresses {
        const ThumbnailData* entry;
        const Gdiplus::Image* picture;
        const std::wstring* place;

        bool operator==(const Addresses&) const = default;
    };

    static ThumbnailData* AskQueue(const wchar_t* path, Form form, SIZE size, int rotation,
                                   bool reload)
    {
        auto& queue = *ResourceQueue::GetInstance();
        if (reload || form == Form::Own || form == Form::LargeTip)
            return queue.GetResource(path, 0, 0, rotation, form == Form::LargeTip, reload);
        if (form == Form::Small)
            return queue.GetResource(path);
        int width = size.cx;
        int height = size.cy;
        int reserved = 0;
        return queue.GetResource(path, width, height, reserved, reserved, rotation);
    }

    void Count(const std::wstring& path, const ThumbnailData& answer, bool reload)
    {
        const Addresses now{&answer, answer.thumbnail, &*answer.position};
        const auto [before, isNew] = m_seen.try_emplace(path, now);
        if (!isNew && before->second == now) {
            m_counts.hits++;
            return;
        }
        m_counts.loads++;
        if (!isNew && !reload)
            m_counts.evictions++;
        before->second = now;
    }

    std::unordered_map<std::wstring, Addresses> m_seen;
    Counts m_counts;
};

// One cell of the grid, in device pixels.
struct Cell {
    RECT picture;
    RECT name;
    RECT size;
};

class ThumbnailsPage : public Page {
public:
    using Page::Page;

    void Notify(TNotifyUI& notification) override
    {
        if (notification.sType == DUI_MSGTYPE_SELECTCHANGED && m_grid)
            Choose();
    }
    void LanguageChanged() override { ShowCounts(); }

protected:
    void OnInit() override
    {
        m_painted = GenerateMsgId();
        ListenMessage(m_painted, [this](WPARAM, LPARAM) {
            if (IsShown())
                ShowCounts();
        });
    }

    void Show() override
    {
        ListFiles();
        m_grid = AddTo<Canvas>(L"thumbnails.grid",
                               [this](Canvas& grid, HDC dc, const RECT&) { Draw(grid, dc); });
        OnClickOf(L"thumbnails.reload", [this] { Reload(); });
        OnClickOf(L"thumbnails.fill", [this] { RequestOtherSpellings(); });
        Choose();
        ShowCounts();
    }
    void Hide() override
    {
        m_grid = nullptr;
        m_files.clear();
    }

private:
    void ListFiles()
    {
        const std::wstring folder =
            (CPaintManagerUI::GetResourcePath() + L"photographs\\").GetData();
        WIN32_FIND_DATAW found{};
        const HANDLE search = ::FindFirstFileW((folder + L"*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE)
            return;
        const Quillet::AtScopeEnd close([search] { ::FindClose(search); });
        do {
            if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
                m_files.push_back(folder + found.cFileName);
        } while (::FindNextFileW(search, &found));
        std::ranges::sort(m_files);
    }

    void Choose()
    {
        for (const auto& form : kForms)
            if (IsChosen(form.option))
                m_form = form.form;
        for (const auto& rotation : kRotations)
            if (IsChosen(rotation.option))
                m_rotation = rotation.degrees;
        Repaint();
    }

    void Repaint()
    {
        if (m_grid)
            m_grid->Invalidate();
    }

    void Reload()
    {
        for (const auto& file : m_files)
            m_queue.Ask(file, m_form, {}, m_rotation, true);
        Repaint();
    }

    // The path is the key exactly as it is written, so each spelling is an entry of its own.
    void RequestOtherSpellings()
    {
        if (m_files.empty())
            return;
        std::wstring path = m_files.front();
        std::vector<std::size_t> letters;
        for (std::size_t at = StartOfName(path); at < path.size(); ++at) {
            if (std::iswalpha(path[at]))
                letters.push_back(at);
        }
        for (unsigned spelling = 1; spelling <= kOtherSpellings; ++spelling) {
            for (std::size_t i = 0; i < letters.size(); ++i) {
                wchar_t& letter = path[letters[i]];
                letter = static_cast<wchar_t>(spelling >> i & 1 ? std::towupper(letter)
                                                                : std::towlower(letter));
            }
            m_queue.Ask(path, Form::Small, {}, 0, false);
        }
        Repaint();
    }

    void ShowCounts()
    {
        const auto& counts = m_queue.Counted();
        const struct {
            const wchar_t* label;
            int value;
        } rows[] = {{L"thumbnails.requests", counts.requests},
                    {L"thumbnails.hits", counts.hits},
                    {L"thumbnails.loads", counts.loads},
                    {L"thumbnails.evictions", counts.evictions}};
        for (const auto& row : rows)
            SetText(row.label, std::to_wstring(row.value).c_str());
    }

    // The texts are set when the paint is over, because they ask for one themselves.
    void Draw(Canvas& grid, HDC dc)
    {
        for (std::size_t i = 0; i < m_files.size(); ++i)
            DrawFile(grid, dc, m_files[i], CellOf(grid, static_cast<int>(i)));
        PostMessageW(m_painted);
    }

    Cell CellOf(Canvas& grid, int index) const
    {
        const int rows = std::max((static_cast<int>(m_files.size()) + kColumns - 1) / kColumns, 1);
        const int width = grid.GetWidth() / kColumns;
        const int height = grid.GetHeight() / rows;
        const int gap = grid.ScaleLength(5);
        const int line = grid.ScaleLength(17);
        const int left = grid.GetPos().left + index % kColumns * width + gap;
        const int top = grid.GetPos().top + index / kColumns * height + gap;
        const int right = left + width - 2 * gap;
        const int bottom = top + height - 2 * gap;
        return {.picture = {left, top, right, bottom - 2 * line},
                .name = {left, bottom - 2 * line, right, bottom - line},
                .size = {left, bottom - line, right, bottom}};
    }

    void DrawFile(Canvas& grid, HDC dc, const std::wstring& file, const Cell& cell)
    {
        const SIZE size{cell.picture.right - cell.picture.left,
                        cell.picture.bottom - cell.picture.top};
        const ThumbnailData* const entry = m_queue.Ask(file, m_form, size, m_rotation, false);
        if (entry && entry->loaded)
            DrawThumbnail(dc, *entry, cell);
        else
            DrawUnread(grid, dc, entry ? entry->icon : nullptr, cell);
        DrawLine(dc, file.substr(StartOfName(file)), kTextColour, cell.name);
        const bool isRead = entry && entry->loaded;
        DrawLine(dc, isRead ? Sized(entry->width, entry->height) : L"—",
                 isRead ? kFaintColour : kFaultColour, cell.size);
    }

    static void DrawThumbnail(HDC dc, const ThumbnailData& entry, const Cell& cell)
    {
        const RECT place = Fit(entry.width, entry.height, cell.picture);
        Gdiplus::Graphics graphics(dc);
        graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
        graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
        graphics.DrawImage(entry.thumbnail, Utils::FromWin32RECT(place));
    }

    static void DrawUnread(Canvas& grid, HDC dc, HICON icon, const Cell& cell)
    {
        CRenderEngine::DrawColor(dc, cell.picture, 0xFFF3F5F8);
        if (!icon)
            return;
        const int size = grid.ScaleLength(kIconSize);
        ::DrawIconEx(dc, (cell.picture.left + cell.picture.right - size) / 2,
                     (cell.picture.top + cell.picture.bottom - size) / 2, icon, size, size, 0,
                     nullptr, DI_NORMAL);
    }

    void DrawLine(HDC dc, const std::wstring& text, DWORD colour, RECT place) const
    {
        CRenderEngine::DrawText(dc, &GetPaintManagerUI(), place, text.c_str(), colour, kSmallFont,
                                DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS |
                                    DT_NOPREFIX);
    }

    UINT m_painted = 0; // message
    std::vector<std::wstring> m_files;
    Form m_form = Form::Small;
    int m_rotation = 0;
    CountedQueue m_queue;
    Canvas* m_grid = nullptr; // owned by the demonstration
};

} // namespace

std::shared_ptr<Page> MakeThumbnailsPage(GalleryWindow& window)
{
    return std::make_shared<ThumbnailsPage>(window);
}

} // namespace gallery
