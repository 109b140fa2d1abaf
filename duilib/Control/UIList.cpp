#include "Control/UIList.h"

namespace DuiLib {

tagTListInfoUI::tagTListInfoUI()
    : nColumns(0),
      rcColumn{},
      nFont(-1),
      uTextStyle(DT_VCENTER | DT_SINGLELINE),
      rcTextPadding{},
      dwTextColor(0xFF000000),
      dwBkColor(0),
      bAlternateBk(false),
      dwSelectedTextColor(0),
      dwSelectedBkColor(0xFFC1E3FF),
      dwHotTextColor(0),
      dwHotBkColor(0xFFE9F5FF),
      dwDisabledTextColor(0xFFCCCCCC),
      dwDisabledBkColor(0xFFFFFFFF),
      dwLineColor(0),
      bShowRowLine(false),
      bShowColumnLine(false),
      bShowHtml(false),
      bMultiExpandable(false),
      bRSelected(false)
{
}

} // namespace DuiLib
