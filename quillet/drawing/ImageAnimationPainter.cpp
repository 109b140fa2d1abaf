#include "quillet/drawing/ImageAnimationPainter.h"

#include <cstddef>
#include <cstdint>

#include "quillet/drawing/FrameDecoder.h"
#include "quillet/resources/SaturatingCast.h"
#include "quillet/resources/Utils.h"
#include "win32/Handles.h"

namespace DuiLib {

namespace {

constexpr UINT kTimer = 17303;

void DeleteAll(std::vector<HBITMAP>& bitmaps)
{
    for (const HBITMAP bitmap : bitmaps)
        ::DeleteObject(bitmap);
    bitmaps.clear();
}

// The names of the picture go from the manager's cache, so that frames do not pile up in it.
void DrawAndForget(HDC hdc, CPaintManagerUI& manager, const RECT& place, const wchar_t* name)
{
    CRenderEngine::DrawImageString(hdc, &manager, place, place, name);
    manager.RemoveImage(name);
}

void DrawAttributeAndForget(HDC hdc, CPaintManagerUI& manager, const RECT& place,
                            const wchar_t* attribute)
{
    TDrawInfo info;
    info.Parse(attribute, nullptr, &manager);
    CRenderEngine::DrawImageInfo(hdc, &manager, place, place, &info);
    manager.RemoveImage(info.sImageName);
    manager.RemoveImage(attribute);
}

} // namespace

struct ImageAnimationPainter::Record {
    enum class Mode { Bitmaps, FileResources };

    explicit Record(CControlUI* owner) : control(owner) { decoder.SetShortestTime(precision); }
    ~Record()
    {
        StopWorker();
        DeleteAll(bitmaps);
    }

    int Count() const
    {
        return static_cast<int>(mode == Mode::FileResources ? names.size() : bitmaps.size());
    }
    bool HasFrame() const { return index >= 0 && index < Count(); }
    bool DecodesInBackground() const { return mode == Mode::FileResources && backgroundLoading; }
    CPaintManagerUI* Manager() const { return control ? control->GetManager() : nullptr; }

    void Tick();
    void Advance();
    int FrameByTime() const;
    void Show(int frame);
    void Stop();
    void StopWorker();
    void Invalidate() const;

    void PaintFrame(HDC hdc, const RECT& place);
    void DrawBitmap(HDC hdc, const RECT& place, HBITMAP bitmap) const;

    std::vector<HBITMAP> bitmaps; // owned
    std::vector<std::wstring> names;
    int index = 0;
    std::int64_t elapsed = 0; // milliseconds into the cycle
    int during = 1000;        // milliseconds
    RECT padding{};
    int precision = 10; // milliseconds
    bool subscribed = false;
    bool backgroundLoading = false;
    bool parseAsAttribute = false;
    bool animating = false;
    DWORD backgroundColour = 0; // ARGB
    CControlUI* control;        // not owned
    Quillet::FrameDecoder decoder;
    Mode mode = Mode::Bitmaps;
    int rounds = 0;
    int maxRound = 1;
    bool roundLimit = false;
};

void ImageAnimationPainter::Record::Tick()
{
    elapsed += precision;
    if (elapsed > std::int64_t{during} + precision)
        elapsed = 0;
    Advance();
}

int ImageAnimationPainter::Record::FrameByTime() const
{
    if (during == 0)
        return index + 1 < Count() ? index + 1 : 0;
    return Quillet::SaturateToInt(static_cast<double>(elapsed) / during * Count());
}

void ImageAnimationPainter::Record::Advance()
{
    int frame = FrameByTime();
    // Published: the time hardly ever gives a frame beyond the last but one, so most animations
    // pass the limit without end.
    if (roundLimit && rounds >= maxRound && frame > Count()) {
        rounds = 0;
        frame = 0;
        Stop();
    }
    if (frame != index)
        Show(frame);
}

void ImageAnimationPainter::Record::Show(int frame)
{
    index = frame;
    if (index >= Count()) {
        index = Count() - 1;
        rounds++;
    }
    if (DecodesInBackground() && HasFrame())
        decoder.Ask(names[static_cast<std::size_t>(index)]);
    Invalidate();
}

void ImageAnimationPainter::Record::Stop()
{
    if (CPaintManagerUI* const manager = Manager())
        manager->KillTimer(control, kTimer);
    StopWorker();
    animating = false;
    Invalidate();
}

void ImageAnimationPainter::Record::StopWorker()
{
    decoder.Stop();
}

void ImageAnimationPainter::Record::Invalidate() const
{
    if (control)
        control->Invalidate();
}

void ImageAnimationPainter::Record::PaintFrame(HDC hdc, const RECT& place)
{
    if (!HasFrame())
        return;
    const auto at = static_cast<std::size_t>(index);
    if (mode == Mode::Bitmaps) {
        DrawBitmap(hdc, place, bitmaps[at]);
        return;
    }
    CPaintManagerUI* const manager = Manager();
    if (!manager)
        return;
    if (parseAsAttribute)
        DrawAttributeAndForget(hdc, *manager, place, names[at].c_str());
    else if (!backgroundLoading)
        DrawAndForget(hdc, *manager, place, names[at].c_str());
    else if (const auto decoded = decoder.Latest())
        DrawBitmap(hdc, place, decoded->get());
}

void ImageAnimationPainter::Record::DrawBitmap(HDC hdc, const RECT& place, HBITMAP bitmap) const
{
    BITMAP size{};
    if (::GetObjectW(bitmap, sizeof size, &size) == 0)
        return;
    const RECT inner{place.left + padding.left, place.top + padding.top,
                     place.right - padding.right, place.bottom - padding.bottom};
    CRenderEngine::DrawImage(hdc, bitmap, inner, inner, {0, 0, size.bmWidth, size.bmHeight}, {},
                             true);
}

ImageAnimationPainter::ImageAnimationPainter(CControlUI* control) : m_pRecord(new Record(control))
{
}

ImageAnimationPainter::~ImageAnimationPainter()
{
    delete m_pRecord;
}

// Published: the record is shared from now on, and the one held before is freed by nobody.
ImageAnimationPainter&
ImageAnimationPainter::operator=(const ImageAnimationPainter& other) = default;

void ImageAnimationPainter::SetBitmaps(const std::vector<HBITMAP>& bitmaps)
{
    std::vector<HBITMAP> taken = bitmaps;
    DeleteAll(m_pRecord->bitmaps);
    m_pRecord->bitmaps.swap(taken);
    m_pRecord->mode = Record::Mode::Bitmaps;
}

void ImageAnimationPainter::SetFileRes(const std::vector<std::wstring>& names, bool preload,
                                       bool backgroundLoading, bool parseAsAttribute)
{
    m_pRecord->parseAsAttribute = parseAsAttribute;
    if (!preload) {
        DeleteAll(m_pRecord->bitmaps);
        m_pRecord->names = names;
        m_pRecord->mode = Record::Mode::FileResources;
        m_pRecord->backgroundLoading = backgroundLoading;
        return;
    }
    std::vector<HBITMAP> decoded;
    decoded.reserve(names.size());
    const Quillet::AtScopeEnd deleteOthers([&decoded] { DeleteAll(decoded); });
    for (const auto& name : names) {
        if (const HBITMAP bitmap = Utils::LoadBitmapFromDuiRes(name.c_str()))
            decoded.push_back(bitmap);
    }
    // Published: when nothing can be decoded the frames held so far stay, and are shown.
    if (!decoded.empty())
        m_pRecord->bitmaps.swap(decoded);
    m_pRecord->mode = Record::Mode::Bitmaps;
}

void ImageAnimationPainter::SetDuring(int ms)
{
    m_pRecord->during = ms;
}

void ImageAnimationPainter::SetPrecision(int ms)
{
    m_pRecord->precision = ms;
    m_pRecord->decoder.SetShortestTime(ms);
}

void ImageAnimationPainter::SetPadding(int left, int top, int right, int bottom)
{
    m_pRecord->padding = {left, top, right, bottom};
}

void ImageAnimationPainter::SetAnimationBackgroundColor(DWORD argb)
{
    m_pRecord->backgroundColour = argb;
}

void ImageAnimationPainter::SetMaxRound(int n)
{
    m_pRecord->maxRound = n;
    m_pRecord->roundLimit = n >= 1;
}

void ImageAnimationPainter::Start()
{
    auto& record = *m_pRecord;
    record.animating = true;
    // Published: the control is listened to once and for good.
    if (!record.subscribed && record.control) {
        record.control->OnNotify += MakeDelegate(this, &ImageAnimationPainter::OnNotify);
        record.subscribed = true;
    }
    record.index = -1;
    record.elapsed = 0;
    if (CPaintManagerUI* const manager = record.Manager())
        manager->SetTimer(record.control, kTimer, static_cast<UINT>(record.precision));
    if (record.DecodesInBackground() && !record.decoder.IsRunning())
        record.decoder.Start();
}

void ImageAnimationPainter::Stop()
{
    m_pRecord->Stop();
}

bool ImageAnimationPainter::IsAnimating()
{
    return m_pRecord->animating;
}

// Published: any timer of the control is a tick, and the notification always goes on.
bool ImageAnimationPainter::OnNotify(void* notification)
{
    const auto& msg = *static_cast<const TNotifyUI*>(notification);
    if (msg.pSender == m_pRecord->control && msg.sType == DUI_MSGTYPE_TIMER)
        m_pRecord->Tick();
    return true;
}

void ImageAnimationPainter::Paint(HDC hdc)
{
    auto& record = *m_pRecord;
    if (!record.control || !record.animating)
        return;
    const RECT place = record.control->GetPos();
    if (record.backgroundColour != 0)
        CRenderEngine::DrawColor(hdc, place, record.backgroundColour);
    record.PaintFrame(hdc, place);
}

void ImageAnimationPainter::CloneStateFrom(ImageAnimationPainter* other)
{
    if (!other)
        return;
    m_pRecord->index = other->m_pRecord->index;
    m_pRecord->elapsed = other->m_pRecord->elapsed;
}

} // namespace DuiLib
