#include <LxUIKit/WebImage/LxCenterAspectCropper.h>

#include <QtMath>

QRect CLxCenterAspectCropper::GetCropRect(const QSize& pixmapSize) {
    if (m_dWidth <= 0 || m_dHeight <= 0 || pixmapSize.isEmpty())
        return QRect();
    const double ratio = m_dWidth / m_dHeight;
    int w = pixmapSize.width(), h = pixmapSize.height();
    if (double(w) / h > ratio)
        w = qMax(1, qRound(h * ratio));
    else
        h = qMax(1, qRound(w / ratio));
    return QRect((pixmapSize.width() - w) / 2, (pixmapSize.height() - h) / 2, w, h);
}
