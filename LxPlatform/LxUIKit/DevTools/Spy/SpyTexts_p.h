#pragma once
// Texts of items for the copy-review mode.
#include <LxUIKit/DevTools/Spy/PseudoWidget.h>

#include <QStringList>

namespace devtools {
namespace spy {

// The display text of a real widget (text, title, window title or placeholder), empty when none.
QString WidgetDisplayText(const QWidget* w);
// The hovered item's text first, then the non-empty texts of its neighbours: the sibling widgets
// of a widget, the other tabs of a tab bar, the other actions of a menu, the rows just above and
// below a view cell. At most kMaxCopyReviewTexts in all.
constexpr int kMaxCopyReviewTexts = 12;
QStringList CopyReviewTexts(const PseudoWidget& pw);

}  // namespace spy
}  // namespace devtools
