#pragma once
// Small widget helpers shared by the UI libraries.

#include <LxStdUI/LxStdUIExport.h>
#include <QFont>
#include <QSizeF>
#include <QString>

class QMouseEvent;

namespace lx_std_ui {

class LXSTDUI_EXPORT LWidgetUtil {
public:
    // True for a mouse event that a touch screen produced (synthesised from touch by the system
    // or by Qt) rather than a real mouse.
    static bool isTouchEvent(const QMouseEvent* pEvent);
    // Width: the horizontal advance of the text; height: the height of its bounding rectangle,
    // both in the given font (fractional, as text layout measures).
    static QSizeF measureText(const QFont& font, const QString& strText);
};

}  // namespace lx_std_ui
