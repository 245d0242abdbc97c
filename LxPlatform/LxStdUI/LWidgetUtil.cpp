#include <LxStdUI/LWidgetUtil.h>

#include <QFontMetricsF>
#include <QMouseEvent>

namespace lx_std_ui {

bool LWidgetUtil::isTouchEvent(const QMouseEvent* pEvent) {
    return pEvent && pEvent->source() != Qt::MouseEventNotSynthesized;
}

QSizeF LWidgetUtil::measureText(const QFont& font, const QString& strText) {
    const QFontMetricsF fm(font);
    return QSizeF(fm.horizontalAdvance(strText), fm.boundingRect(strText).height());
}

}  // namespace lx_std_ui
