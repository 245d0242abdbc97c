#include <LxUIKit/ImagePreview/LxImagePreviewHelper.h>

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

QSize CLxImagePreviewHelper::GetMinImageArea(const QSize& screen) {
    return QSize(int(screen.width() * 0.28), int(screen.height() * 0.28));
}

QSize CLxImagePreviewHelper::GetMaxImageArea(const QSize& screen) {
    return QSize(int(screen.width() * 0.86), int(screen.height() * 0.88));
}

QSize CLxImagePreviewHelper::GetScreenSizeUnderCursor() {
    QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen ? screen->size() : QSize(1280, 800);
}

CLxImagePreviewHelper::ScaleResult CLxImagePreviewHelper::CalculateScaleResult(const QSize& image) {
    const QSize screen = GetScreenSizeUnderCursor();
    return CalculateScaleResult(image, GetMinImageArea(screen), GetMaxImageArea(screen));
}

CLxImagePreviewHelper::ScaleResult CLxImagePreviewHelper::CalculateScaleResult(const QSize& image, const QSize& minArea,
                                                                               const QSize& maxArea) {
    ScaleResult r;
    const int w = image.width(), h = image.height();
    const int wmin = minArea.width(), hmin = minArea.height(), wmax = maxArea.width(), hmax = maxArea.height();
    if (w <= 0 || h <= 0 || wmin <= 0 || hmin <= 0 || wmax <= 0 || hmax <= 0) {
        r.imageArea = minArea;  // size unknown yet: the smallest window, the picture fitted later
        return r;
    }
    if (w <= wmin && h <= hmin) {
        r.imageArea = minArea;
        if (w != wmin && h != hmin)
            r.dScale = qMin(double(wmin) / w, double(hmin) / h);
        return r;
    }
    if (h <= hmin && w > wmin && w <= wmax) {
        r.imageArea = QSize(w, hmin);
        return r;
    }
    if (w <= wmin && h > hmin && h <= hmax) {
        r.imageArea = QSize(wmin, h);
        return r;
    }
    if (w > wmin && w <= wmax && h > hmin && h <= hmax) {
        r.imageArea = QSize(w, h);
        return r;
    }
    // Larger than the maximum on a side: by the picture's ratio of height to width (compared by
    // cross-multiplying, so equal ratios fall on the documented side).
    const qint64 H = h, W = w;
    if (H * wmax <= qint64(hmin) * W) {
        r.dScale = double(wmax) / w;
        r.imageArea = QSize(wmax, hmin);
    } else if (H * wmax <= qint64(hmax) * W) {
        r.dScale = double(wmax) / w;
        r.imageArea = QSize(wmax, qRound(h * r.dScale));
    } else if (H * wmin <= qint64(hmax) * W) {
        r.dScale = double(hmax) / h;
        r.imageArea = QSize(qRound(w * r.dScale), hmax);
    } else {
        r.dScale = double(hmax) / h;
        r.imageArea = QSize(wmin, hmax);
    }
    return r;
}

double CLxImagePreviewHelper::GetImageScaleFactor(const QSize& image, const QSize& area) {
    if (image.isEmpty() || area.isEmpty())
        return 1.0;
    return qMin(1.0, qMin(double(area.width()) / image.width(), double(area.height()) / image.height()));
}
