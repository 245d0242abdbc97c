#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler_p.h>

#include <QtGui/private/qfont_p.h>
#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>
#include <QTextDocument>
#include <QUrl>

#include <cmath>

namespace {

// A local file (or ":/" resource) that a name stands for; empty for URLs and unknown names.
QString LocalFile(const QString& name) {
    if (name.startsWith(QLatin1Char(':')))
        return QFileInfo::exists(name) ? name : QString();
    const QUrl url(name);
    QString file;
    if (url.isLocalFile())
        file = url.toLocalFile();
    else if (url.scheme().isEmpty() || (url.scheme().size() == 1 && name.size() > 2 && name.at(1) == QLatin1Char(':')))
        file = name;  // a plain path (a drive letter looks like a one-letter scheme)
    return !file.isEmpty() && QFileInfo::exists(file) ? file : QString();
}

QString HighResVariant(const QString& file, double dpr, qreal* pSourceDpr) {
    *pSourceDpr = 1.0;
    if (dpr <= 1.0)
        return file;
    const int dot = file.lastIndexOf(QLatin1Char('.'));
    if (dot <= 0)
        return file;
    for (int n = qMin(3, int(std::ceil(dpr))); n >= 2; --n) {
        const QString candidate = file.left(dot) + QStringLiteral("@%1x").arg(n) + file.mid(dot);
        if (QFileInfo::exists(candidate)) {
            *pSourceDpr = n;
            return candidate;
        }
    }
    return file;
}

}  // namespace

QObject* CreateLxEmotionObjectHandler(QObject* pParent) { return new CLxEmotionObjectHandler(pParent); }

CLxEmotionObjectHandler::CLxEmotionObjectHandler(QObject* pParent) : QTextImageHandler(pParent) {}

QPixmap CLxEmotionObjectHandler::getPixmap(QTextDocument* doc, const QTextImageFormat& format, double devicePixelRatio,
                                           bool* pShared) {
    if (pShared)
        *pShared = false;
    const QString name = format.name();
    if (name.isEmpty())
        return QPixmap();
    QPixmap pm;
    const QString file = LocalFile(name);
    if (!file.isEmpty()) {
        qreal sourceDpr = 1.0;
        const QString real = HighResVariant(file, devicePixelRatio, &sourceDpr);
        const QString key = QStringLiteral("lxemo|") + real;
        if (!QPixmapCache::find(key, &pm)) {
            QImageReader reader(real);
            const QImage img = reader.read();
            if (!img.isNull()) {
                pm = QPixmap::fromImage(img);
                QPixmapCache::insert(key, pm);
            }
        }
        if (!pm.isNull()) {
            pm.setDevicePixelRatio(sourceDpr);
            if (pShared)
                *pShared = true;
            return pm;
        }
    }
    if (!doc)
        return QPixmap();
    const QVariant data = doc->resource(QTextDocument::ImageResource, QUrl::fromEncoded(name.toUtf8()));
    if (data.userType() == QMetaType::QPixmap || data.userType() == QMetaType::QImage)
        pm = qvariant_cast<QPixmap>(data);
    else if (data.userType() == QMetaType::QByteArray)
        pm.loadFromData(data.toByteArray());
    return pm;
}

QSizeF CLxEmotionObjectHandler::intrinsicSize(QTextDocument* doc, int, const QTextFormat& format) {
    const QTextImageFormat fmt = format.toImageFormat();
    const bool bHasWidth = fmt.hasProperty(QTextFormat::ImageWidth);
    const bool bHasHeight = fmt.hasProperty(QTextFormat::ImageHeight);
    QSizeF size(bHasWidth ? fmt.width() : 0, bHasHeight ? fmt.height() : 0);
    if (!bHasWidth || !bHasHeight) {
        const QPixmap pm = getPixmap(doc, fmt);
        if (!pm.isNull()) {
            const QSizeF ps = QSizeF(pm.size()) / pm.devicePixelRatio();
            if (!bHasWidth && !bHasHeight)
                size = ps;
            else if (!bHasWidth)
                size.setWidth(ps.height() > 0 ? size.height() * ps.width() / ps.height() : 0);
            else
                size.setHeight(ps.width() > 0 ? size.width() * ps.height() / ps.width() : 0);
        }
    }
    QPaintDevice* pDevice = doc && doc->documentLayout() ? doc->documentLayout()->paintDevice() : nullptr;
    if (pDevice)
        size *= qreal(pDevice->logicalDpiY()) / qreal(qt_defaultDpi());
    return size;
}

void CLxEmotionObjectHandler::drawObject(QPainter* p, const QRectF& rect, QTextDocument* doc, int,
                                         const QTextFormat& format) {
    if (!p || rect.isEmpty())
        return;
    const qreal dpr = p->device() ? p->device()->devicePixelRatioF() : 1.0;
    const QTextImageFormat fmt = format.toImageFormat();
    bool bShared = false;
    const QPixmap pm = getPixmap(doc, fmt, dpr, &bShared);
    if (pm.isNull())
        return;
    const QSize target = (rect.size() * dpr).toSize();
    QPixmap scaled;
    const QString key = QStringLiteral("lxemo-s|%1|%2x%3|%4")
                            .arg(fmt.name(), QString::number(target.width()), QString::number(target.height()),
                                 QString::number(pm.devicePixelRatio()));
    if (!bShared || !QPixmapCache::find(key, &scaled)) {
        scaled = pm.size() == target ? pm : pm.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        if (bShared)
            QPixmapCache::insert(key, scaled);
    }
    scaled.setDevicePixelRatio(dpr);
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    p->setRenderHint(QPainter::SmoothPixmapTransform);
    p->drawPixmap(rect, scaled, QRectF(QPointF(0, 0), QSizeF(scaled.size())));
    p->restore();
}
