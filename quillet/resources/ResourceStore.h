#pragma once

#include <UIlib.h>

#include <cstddef>

#include "quillet/resources/QueryControlTextEx.h"

namespace DuiLib {

// What every resource manager holds and how it works on it: texts, paths, language, scale. The
// managers forward to it; applications use the managers.
class ResourceStore {
public:
    // What becomes of a value that scales to nothing on a monitor-aware process.
    enum class ZeroScaled { StaysZero, BecomesOne };

    explicit ResourceStore(ZeroScaled zeroScaled);

    // Published: a copy shares the tables and their strings with its original; callers rely on
    // seeing later texts in both.
    ResourceStore(const ResourceStore&) = default;
    ResourceStore& operator=(const ResourceStore&) = default;
    ~ResourceStore(); // frees the shared strings, so only one of several copies may get here

    // Storage for a manager, cleared; null when there is none.
    static void* Allocate(std::size_t bytes) noexcept;
    static void Free(void* storage) noexcept;

    int LoadLanguage(const wchar_t* source);
    CDuiString GetText(const wchar_t* id, const wchar_t* type);
    void ReloadText();
    void ResetTextMap();
    void SetTextQueryInterface(IQueryControlTextEx* query) { m_pQuery = query; }
    void SetLanguage(const wchar_t* code) { m_sLanguage = code; }
    const wchar_t* GetLanguage() const { return m_sLanguage; }

    int LoadResource(STRINGorID xml, const wchar_t* type);
    int LoadResource(CMarkupNode node);
    const wchar_t* GetImagePath(const wchar_t* id) const;
    const wchar_t* GetXmlPath(const wchar_t* id) const;
    void ResetResourceMap();

    unsigned GetDPI() const;
    unsigned GetScale() const;
    void SetScale(unsigned dpi);
    PROCESS_DPI_AWARENESS GetDPIAwareness();
    int SetDPIAwareness(PROCESS_DPI_AWARENESS awareness);
    static unsigned GetTrueDPI();

    int Scale(int value) const;
    static int Scale(int value, unsigned dpi);
    SIZE Scale(SIZE size) const;
    POINT Scale(POINT point) const;
    RECT Scale(RECT rect) const;
    void Scale(POINT* point) const;
    void Scale(SIZE* size) const;
    void Scale(RECT* rect) const;
    int RestoreScale(int value) const;
    RECT RestoreScaleRect(RECT rect) const;

private:
    int Unscale(int value) const;

    CStdStringPtrMap m_mTexts; // each value of the three tables is an owned CDuiString, or null
    IQueryControlTextEx* m_pQuery = nullptr;
    CStdStringPtrMap m_mImagePaths;
    CStdStringPtrMap m_mXmlPaths;
    CMarkup m_Index;
    CDuiString m_sLanguage;
    CStdStringPtrMap m_mSpare;   // Published: nothing reads or writes it
    unsigned m_uScale = 0;       // percent, of a monitor-aware process
    unsigned m_uSystemScale = 0; // percent, of a system-aware process
    PROCESS_DPI_AWARENESS m_nAwareness = PROCESS_PER_MONITOR_DPI_AWARE;
    ZeroScaled m_nZeroScaled;
};

} // namespace DuiLib
