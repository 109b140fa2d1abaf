#include "bench/BenchWindow.h"
#include "bench/Harness.h"

#include "win32/Handles.h"

#include <cwchar>
#include <iterator>

namespace bench {

namespace {

using namespace DuiLib;

constexpr int kFewRows = 10'000;
constexpr int kManyRows = 100'000;
constexpr int kWidth = 600;
constexpr int kHeight = 800;
constexpr int kRowHeight = 20;
constexpr int kColumns = 3;
constexpr int kSteps = 100;
constexpr int kFirstStep = 50'000; // pixels down the list
constexpr int kStepSize = 37;      // pixels

constexpr double kLargestForManyRows = 1.2;
constexpr double kLargestForManyAdditions = 1.5;

constexpr const wchar_t* kSkin =
    L"<Window><VerticalLayout bkcolor=\"#FFFFFFFF\">"
    L"<List name=\"list\" vscrollbar=\"true\" itemtextpadding=\"4,0,4,0\">"
    L"<ListHeader height=\"24\">"
    L"<ListHeaderItem width=\"200\" text=\"A\"/><ListHeaderItem width=\"200\" text=\"B\"/>"
    L"<ListHeaderItem width=\"180\" text=\"C\"/>"
    L"</ListHeader></List></VerticalLayout></Window>";

void Write(wchar_t (&text)[32], int row, int column)
{
    std::swprintf(text, std::size(text), L"cell %06d.%d", row, column);
}

// A window with a list that is filled, scrolled and painted.
class ListWindow {
public:
    ListWindow()
    {
        m_window.Load(kSkin);
        m_list = static_cast<CListUI*>(m_window.Manager().FindControl(L"list"));
        m_list->SetDelayedDestroy(false);
    }

    void Add(int rows)
    {
        for (int row = 0; row < rows; ++row) {
            auto* const item = new CListTextElementUI;
            item->SetFixedHeight(kRowHeight);
            m_list->Add(item);
        }
    }

    void SetTexts()
    {
        wchar_t text[32];
        for (int row = 0; row < m_list->GetCount(); ++row) {
            auto* const item = static_cast<CListTextElementUI*>(m_list->GetItemAt(row));
            for (int column = 0; column < kColumns; ++column) {
                Write(text, row, column);
                item->SetText(column, text);
            }
        }
    }

    void Clear() { m_list->RemoveAll(); }
    void Repaint() { m_window.Repaint(); }
    BenchWindow& Window() { return m_window; }

    void Scroll()
    {
        for (int step = 0; step < kSteps; ++step) {
            m_list->SetScrollPos({0, kFirstStep + step * kStepSize});
            Repaint();
        }
    }

private:
    BenchWindow m_window{kWidth, kHeight};
    CListUI* m_list;
};

// The texts that the list shows while it scrolls, drawn off screen and copied to the window.
class BareTexts {
public:
    explicit BareTexts(BenchWindow& window)
        : m_window(window),
          m_font(window.Manager().GetFont(-1)),
          m_memory(::CreateCompatibleDC(m_window.get())),
          m_bitmap(::CreateCompatibleBitmap(m_window.get(), kWidth, kHeight))
    {
    }

    void Draw()
    {
        const Quillet::SelectedObject bitmap(m_memory.get(), m_bitmap.get());
        const Quillet::SelectedObject font(m_memory.get(), m_font);
        ::SetBkMode(m_memory.get(), TRANSPARENT);
        for (int step = 0; step < kSteps; ++step) {
            const RECT all{0, 0, kWidth, kHeight};
            ::FillRect(m_memory.get(), &all, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
            DrawRows((kFirstStep + step * kStepSize) / kRowHeight);
            ::BitBlt(m_window.get(), 0, 0, kWidth, kHeight, m_memory.get(), 0, 0, SRCCOPY);
        }
    }

private:
    void DrawRows(int first)
    {
        wchar_t text[32];
        for (int row = 0; row * kRowHeight < kHeight; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                Write(text, first + row, column);
                RECT room{column * 200 + 4, row * kRowHeight, column * 200 + 196,
                          (row + 1) * kRowHeight};
                ::DrawTextW(m_memory.get(), text, -1, &room, DT_SINGLELINE | DT_VCENTER);
            }
        }
    }

    Quillet::WindowDc m_window;
    HFONT m_font;
    Quillet::UniqueMemoryDc m_memory;
    Quillet::UniqueBitmap m_bitmap;
};

void MeasureScrolling(Report& report)
{
    ListWindow few;
    few.Add(kFewRows);
    few.SetTexts();
    few.Repaint();
    ListWindow many;
    many.Add(kManyRows);
    many.SetTexts();
    many.Repaint();
    const auto both = TimeBoth([&] { many.Scroll(); }, [&] { few.Scroll(); });
    report.Add({"scroll and paint a list 100 times: 100,000 rows / 10,000 rows", both.cost,
                both.bare, kLargestForManyRows});

    BareTexts texts(many.Window());
    const auto drawn = TimeBoth([&] { many.Scroll(); }, [&] { texts.Draw(); });
    report.Add({"scroll and paint a list of 100,000 rows 100 times / its texts", drawn.cost,
                drawn.bare, std::nullopt});
}

void MeasureFilling(Report& report)
{
    ListWindow window;
    const auto fill = [&window](int rows) {
        window.Add(rows);
        window.Repaint();
        window.Clear();
    };
    const auto both = TimeBoth([&] { fill(kManyRows); },
                               [&] {
                                   for (int i = 0; i < kManyRows / kFewRows; ++i)
                                       fill(kFewRows);
                               });
    report.Add({"fill a list and lay it out: 100,000 rows / ten times 10,000", both.cost, both.bare,
                kLargestForManyAdditions});
}

} // namespace

void RunListBench(Report& report)
{
    MeasureScrolling(report);
    MeasureFilling(report);
}

} // namespace bench
