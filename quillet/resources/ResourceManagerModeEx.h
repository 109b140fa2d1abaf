#pragma once

#include <UIlib.h>

#include <cstddef>

#include "quillet/Export.h"
#include "quillet/resources/ResourceStore.h"

namespace DuiLib {

// The holder of texts, paths, language and scale of windows of class "SettingsMainWindow"; apart
// from the mask window it offers what CResourceManagerEx does, on tables of its own.
class QUILLET_API CResourceManagerModeEx {
public:
    // The one manager, made at first use; null for ever when there was no memory for it. Safe on
    // any thread, unlike everything else here.
    static CResourceManagerModeEx* GetInstance();

    // Destroys the manager; once, at the end of the process. A null pointer does nothing.
    void Release();

    // Published: a copy shares the tables and their strings, so it is never released itself.
    CResourceManagerModeEx(const CResourceManagerModeEx& other);
    CResourceManagerModeEx& operator=(const CResourceManagerModeEx& other);

    static void* operator new(std::size_t bytes) noexcept; // cleared storage, null without memory
    static void operator delete(void* storage) noexcept;

    // Texts. A language file's Text elements give ids their texts; what no file knows is asked of
    // the application, and what nobody knows is shown as its id.
    int LoadLanguage(const wchar_t* source); // XML text or a file of the resources; 0 on failure
    CDuiString GetText(const wchar_t* id, const wchar_t* type = nullptr);
    void ReloadText(); // asks the application again for every id known so far
    void ResetTextMap();
    void SetTextQueryInterface(IQueryControlTextEx* query); // not owned; null for none
    void SetLanguage(const wchar_t* code); // such as "zh-CN"; any text is kept as it is
    const wchar_t* GetLanguage();

    // Paths. An index file's Image and Xml elements, at any depth, give ids their paths.
    int LoadResource(STRINGorID xml, const wchar_t* type = nullptr); // 0 on failure
    int LoadResource(CMarkupNode node);
    const wchar_t* GetImagePath(const wchar_t* id); // null when unknown
    const wchar_t* GetXmlPath(const wchar_t* id);
    void ResetResourceMap();

    // Windows that other parts of the application look for; kept, not owned.
    void SetMainHWND(HWND window);
    HWND GetMainHWND();

    // DPI and scale. A scale is a percentage, 100 at 96 DPI.
    unsigned GetDPI();
    unsigned GetScale();
    void SetScale(unsigned dpi); // takes a DPI
    PROCESS_DPI_AWARENESS GetDPIAwareness();
    int SetDPIAwareness(PROCESS_DPI_AWARENESS awareness); // before any window exists; 1 when set
    unsigned GetTrueDPI(); // of the main monitor, as the system reports it

    // Design pixels to device pixels and back. The pointer forms work in place.
    int Scale(int value);
    int Scale(int value, unsigned dpi);
    SIZE Scale(SIZE size);
    POINT Scale(POINT point);
    RECT Scale(RECT rect);
    void Scale(POINT* point);
    void Scale(SIZE* size);
    void Scale(RECT* rect);
    int RestoreScale(int value);
    RECT RestoreScaleRect(RECT rect);

private:
    CResourceManagerModeEx();
    ~CResourceManagerModeEx();

    ResourceStore m_Store;
    HWND m_hMainWnd = nullptr;
};

} // namespace DuiLib
