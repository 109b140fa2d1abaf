#include "gallery/MonitorRules.h"

#include <utility>

namespace gallery {

namespace {

// A window that never exists: it only lends its arithmetic.
class MonitorRules : public DuiLib::WindowImplBaseEx {
public:
    explicit MonitorRules(SIZE monitor) { m_szScreen = monitor; }

    std::vector<std::string> TakeTrace() { return std::move(m_trace); }

    // WindowImplBaseEx:
    void WriteLog(int, std::string, std::string message) override
    {
        m_trace.push_back(std::move(message));
    }

protected:
    LPCTSTR GetWindowClassName() const override { return L"QuilletMonitorRules"; }
    DuiLib::CDuiString GetSkinFile() override { return {}; }

private:
    std::vector<std::string> m_trace;
};

} // namespace

unsigned UsableDpi(SIZE monitor, unsigned requestedDpi)
{
    return MonitorRules(monitor).GetDPI(requestedDpi);
}

std::vector<std::string> TraceOf(SIZE monitor, unsigned requestedDpi)
{
    MonitorRules rules(monitor);
    rules.GetDPI(requestedDpi);
    return rules.TakeTrace();
}

} // namespace gallery
