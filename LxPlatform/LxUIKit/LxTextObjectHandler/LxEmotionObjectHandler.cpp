#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler_p.h>

#include <QtGui/private/qfont_p.h>
#include <QAbstractTextDocumentLayout>
#include <QFileInfo>
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
        QString candidate = file.left(dot) + QStringLiteral("@%1x").arg(n) + file.mid(dot);
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

QPixmap CLxEmotionObjectHandler::getPixmap(QTextDocument* doc, const QTextImageFormat& format,
                                           double devicePixelRatio) {
    const QString name = format.name();
    if (name.isEmpty())
        return QPixmap();
    // As Qt's image handler: the high-resolution file's name is the name looked up when one exists.
    qreal sourceDpr = 1.0;
    const QString file = LocalFile(name);
    const QString real = file.isEmpty() ? QString() : HighResVariant(file, devicePixelRatio, &sourceDpr);
    const QUrl key(real.isEmpty() || real == file ? name : real);
    QPixmap pm;
    // A resource the document has (added by the host, or loaded by the document or its owner's
    // loadResource) comes first.
    if (doc) {
        const QVariant data = doc->resource(QTextDocument::ImageResource, key);
        if (data.userType() == QMetaType::QPixmap || data.userType() == QMetaType::QImage)
            pm = qvariant_cast<QPixmap>(data);
        else if (data.userType() == QMetaType::QByteArray && pm.loadFromData(data.toByteArray()))
            doc->addResource(QTextDocument::ImageResource, key, pm);  // decode the bytes once
    }
    // Then the file itself, kept in the document so that it is decoded once per document.
    if (pm.isNull() && !real.isEmpty()) {
        QImage img;
        if (img.load(real)) {
            pm = QPixmap::fromImage(std::move(img));
            if (doc)
                doc->addResource(QTextDocument::ImageResource, key, pm);
        }
    }
    if (!pm.isNull() && sourceDpr != 1.0)
        pm.setDevicePixelRatio(sourceDpr);
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
    const QPixmap pm = getPixmap(doc, fmt, dpr);
    if (pm.isNull())
        return;
    const QSize target = (rect.size() * dpr).toSize();
    // Scaled copies are shared by every document that holds the same pixmap (the key names the
    // pixel data, not the picture's name, which two documents may use for different pictures).
    QPixmap scaled;
    const QString key =
        QStringLiteral("lxemo-s|%1|%2x%3")
            .arg(QString::number(pm.cacheKey()), QString::number(target.width()), QString::number(target.height()));
    if (!QPixmapCache::find(key, &scaled)) {
        scaled = pm.size() == target ? pm : pm.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QPixmapCache::insert(key, scaled);
    }
    scaled.setDevicePixelRatio(dpr);
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    p->setRenderHint(QPainter::SmoothPixmapTransform);
    p->drawPixmap(rect, scaled, QRectF(QPointF(0, 0), QSizeF(scaled.size())));
    p->restore();
}
