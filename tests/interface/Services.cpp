#include "interface/Declarations.h"

using namespace DuiLib;
using namespace interface_test;

namespace {

std::vector<Declaration> CDPIOperations()
{
    return {
        FUNCTION(CDPI, CDPI, GetMainMonitorDPI, int(HWND)),
        FUNCTION(CDPI, CDPI, GetDPIOfMonitor, int(HMONITOR)),
        FUNCTION(CDPI, CDPI, GetDPIOfMonitorNearestToPoint, int(POINT)),
        OPERATION(CDPI, CDPI, GetDPIAwareness, PROCESS_DPI_AWARENESS()),
        OPERATION(CDPI, CDPI, SetDPIAwareness, BOOL(PROCESS_DPI_AWARENESS)),
        OPERATION(CDPI, CDPI, GetDPI, UINT()),
        OPERATION(CDPI, CDPI, GetScale, UINT()),
        OPERATION(CDPI, CDPI, SetScale, void(UINT)),
        OPERATION(CDPI, CDPI, Scale, int(int)),
        OPERATION(CDPI, CDPI, Scale, RECT(RECT)),
        OPERATION(CDPI, CDPI, Scale, void(RECT*)),
        OPERATION(CDPI, CDPI, Scale, POINT(POINT)),
        OPERATION(CDPI, CDPI, Scale, void(POINT*)),
        OPERATION(CDPI, CDPI, Scale, SIZE(SIZE)),
        OPERATION(CDPI, CDPI, Scale, void(SIZE*)),
        OPERATION(CDPI, CDPI, ScaleBack, int(int)),
        OPERATION(CDPI, CDPI, ScaleBack, void(RECT*)),
    };
}

std::vector<Declaration> CResourceManagerOperations()
{
    return {
        FUNCTION(CResourceManager, CResourceManager, GetInstance, CResourceManager * ()),
        OPERATION(CResourceManager, CResourceManager, Release, void()),
        OPERATION(CResourceManager, CResourceManager, LoadResource, BOOL(STRINGorID, LPCTSTR)),
        OPERATION(CResourceManager, CResourceManager, LoadResource, BOOL(CMarkupNode)),
        OPERATION(CResourceManager, CResourceManager, ResetResourceMap, void()),
        OPERATION(CResourceManager, CResourceManager, GetImagePath, LPCTSTR(LPCTSTR)),
        OPERATION(CResourceManager, CResourceManager, GetXmlPath, LPCTSTR(LPCTSTR)),
        OPERATION(CResourceManager, CResourceManager, SetLanguage, void(LPCTSTR)),
        OPERATION(CResourceManager, CResourceManager, GetLanguage, LPCTSTR()),
        OPERATION(CResourceManager, CResourceManager, LoadLanguage, BOOL(LPCTSTR)),
        OPERATION(CResourceManager, CResourceManager, SetTextQueryInterface,
                  void(IQueryControlText*)),
        OPERATION(CResourceManager, CResourceManager, GetText, CDuiString(LPCTSTR, LPCTSTR)),
        OPERATION(CResourceManager, CResourceManager, ReloadText, void()),
        OPERATION(CResourceManager, CResourceManager, ResetTextMap, void()),
    };
}

struct CUIAnimationProtected : CUIAnimation {
    static std::vector<Declaration> List()
    {
        return {
            OPERATION(CUIAnimation, CUIAnimationProtected, GetAnimationDataByID,
                      CAnimationData * (int)),
        };
    }
};

std::vector<Declaration> CUIAnimationOperations()
{
    return {
        OPERATION(CUIAnimation, CUIAnimation, Attach, void(CControlUI*)),
        OPERATION(CUIAnimation, CUIAnimation, StartAnimation, BOOL(int, int, int, BOOL)),
        OPERATION(CUIAnimation, CUIAnimation, StopAnimation, void(int)),
        OPERATION(CUIAnimation, CUIAnimation, IsAnimationRunning, BOOL(int)),
        OPERATION(CUIAnimation, CUIAnimation, GetCurrentFrame, int(int)),
        OPERATION(CUIAnimation, CUIAnimation, SetCurrentFrame, BOOL(int, int)),
        OPERATION(CUIAnimation, CUIAnimation, OnAnimationStart, void(int, BOOL)),
        OPERATION(CUIAnimation, CUIAnimation, OnAnimationStep, void(int, int, int)),
        OPERATION(CUIAnimation, CUIAnimation, OnAnimationStop, void(int)),
        OPERATION(CUIAnimation, CUIAnimation, OnAnimationElapse, void(int)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct CUIAnimationOverrides : CUIAnimation {
    BOOL StartAnimation(int, int, int, BOOL) override;
    void StopAnimation(int) override;
    BOOL IsAnimationRunning(int) override;
    int GetCurrentFrame(int) override;
    BOOL SetCurrentFrame(int, int) override;
    void OnAnimationStart(int, BOOL) override;
    void OnAnimationStep(int, int, int) override;
    void OnAnimationStop(int) override;
    void OnAnimationElapse(int) override;
};

std::vector<Declaration> IUIAnimationOperations()
{
    return {
        OPERATION(IUIAnimation, IUIAnimation, StartAnimation, BOOL(int, int, int, BOOL)),
        OPERATION(IUIAnimation, IUIAnimation, StopAnimation, void(int)),
        OPERATION(IUIAnimation, IUIAnimation, IsAnimationRunning, BOOL(int)),
        OPERATION(IUIAnimation, IUIAnimation, GetCurrentFrame, int(int)),
        OPERATION(IUIAnimation, IUIAnimation, SetCurrentFrame, BOOL(int, int)),
        OPERATION(IUIAnimation, IUIAnimation, OnAnimationStep, void(int, int, int)),
        OPERATION(IUIAnimation, IUIAnimation, OnAnimationStart, void(int, BOOL)),
        OPERATION(IUIAnimation, IUIAnimation, OnAnimationStop, void(int)),
        OPERATION(IUIAnimation, IUIAnimation, OnAnimationElapse, void(int)),
    };
}

// Compiles because each is virtual with this signature; never made.
struct IUIAnimationOverrides : IUIAnimation {
    BOOL StartAnimation(int, int, int, BOOL) override;
    void StopAnimation(int) override;
    BOOL IsAnimationRunning(int) override;
    int GetCurrentFrame(int) override;
    BOOL SetCurrentFrame(int, int) override;
    void OnAnimationStep(int, int, int) override;
    void OnAnimationStart(int, BOOL) override;
    void OnAnimationStop(int) override;
    void OnAnimationElapse(int) override;
};

// What may be left out of a call.
static_assert(requires(CDPI & it) { it.GetMainMonitorDPI(); });
static_assert(requires(CResourceManager & it, STRINGorID a0) { it.LoadResource(a0); });
static_assert(requires(CResourceManager & it, LPCTSTR a0) { it.GetText(a0); });
static_assert(requires(CUIAnimation & it, int a0, int a1) { it.StartAnimation(a0, a1); });
static_assert(requires(CUIAnimation & it, int a0, int a1, int a2) {
    it.StartAnimation(a0, a1, a2);
});
static_assert(requires(CUIAnimation & it) { it.StopAnimation(); });
static_assert(requires(CUIAnimation & it) { it.GetCurrentFrame(); });
static_assert(requires(CUIAnimation & it, int a0) { it.SetCurrentFrame(a0); });
static_assert(requires(IUIAnimation & it, int a0, int a1) { it.StartAnimation(a0, a1); });
static_assert(requires(IUIAnimation & it, int a0, int a1, int a2) {
    it.StartAnimation(a0, a1, a2);
});
static_assert(requires(IUIAnimation & it) { it.StopAnimation(); });
static_assert(requires(IUIAnimation & it) { it.GetCurrentFrame(); });
static_assert(requires(IUIAnimation & it, int a0) { it.SetCurrentFrame(a0); });

} // namespace

namespace interface_test {

std::vector<Declaration> Services()
{
    return Join({CDPIOperations(), CResourceManagerOperations(), CUIAnimationProtected::List(),
                 CUIAnimationOperations(), IUIAnimationOperations()});
}

} // namespace interface_test
