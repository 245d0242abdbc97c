#pragma once
// Entry points of the widget inspector for the rest of the kit and for hosts.
#include <LxUIKit/LxUIKitExport.h>

#include <QString>

class QWidget;

namespace devtools {
namespace spy {

// Opens the inspector and starts picking (initSpyToolWnd(true)).
LXUIKIT_EXPORT void ShowSpyToolWin();
// The style-sheet rules that apply to the widget, as HTML.
LXUIKIT_EXPORT QString DumpObjectStyleSheetDebugHtmlText(const QWidget* widget);

}  // namespace spy
}  // namespace devtools
