#include "bench/BenchWindow.h"

namespace bench {

std::wstring SkinOf(int rows, int columns)
{
    std::wstring skin = L"<Window><VerticalLayout>\n";
    int number = 0;
    for (int row = 0; row < rows; ++row) {
        skin += L"<HorizontalLayout>\n";
        for (int column = 0; column < columns; ++column, ++number) {
            const auto text = std::to_wstring(number);
            skin += L"<Label name=\"control" + text + L"\" text=\"Text " + text +
                    L"\" bkcolor=\"#FFE8F3FF\" bordercolor=\"#FF007DFF\" bordersize=\"1\""
                    L" textcolor=\"#FF1F2933\" align=\"center\"/>\n";
        }
        skin += L"</HorizontalLayout>\n";
    }
    return skin + L"</VerticalLayout></Window>";
}

} // namespace bench
