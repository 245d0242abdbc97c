#include <LxUIKit/RichText/LxRichTextDocument_p.h>

#include <LxUIKit/WebImage/LxDecodedFrom_p.h>

#include <QCache>
#include <QPixmap>
#include <QUrl>

namespace {

// Pictures of labels are small (emoji, emoticons); the bound only keeps a host that shows many
// large inline images from growing without end.
constexpr int kCacheCostBytes = 32 * 1024 * 1024;

QCache<QString, QPixmap>& Pictures() {
    static QCache<QString, QPixmap> s_cache(kCacheCostBytes);
    return s_cache;
}

// The file behind a picture's name, as Qt's image handler forms it: "qrc:/x" for ":/x", a local
// file URL, or a bare path. Empty for anything else (remote names stay with QTextDocument).
QString LocalPathOf(const QUrl& name) {
    if (name.scheme() == QLatin1String("qrc"))
        return QLatin1Char(':') + name.path();
    if (name.isLocalFile())
        return name.toLocalFile();
    if (name.scheme().isEmpty())
        return name.path();
    return QString();
}

}  // namespace

QPixmap CLxRichTextDocument::SharedPicture(const QString& path) {
    const QString key = path.isEmpty() ? QString() : lxuikit_image::FileStamp(path);
    if (key.isEmpty())
        return QPixmap();
    if (const QPixmap* cached = Pictures().object(key))
        return *cached;
    QPixmap pixmap;
    if (!pixmap.load(path))
        return QPixmap();
    // Qt's image handler gives an "@2x" file the ratio 2 on each paint; set already, that is no
    // copy of the shared pixmap.
    if (path.contains(QLatin1String("@2x")))
        pixmap.setDevicePixelRatio(2.0);
    const qint64 bytes = qint64(pixmap.width()) * pixmap.height() * qMax(1, pixmap.depth() / 8);
    Pictures().insert(key, new QPixmap(pixmap), int(qMin<qint64>(bytes, kCacheCostBytes)));
    return pixmap;
}

QVariant CLxRichTextDocument::loadResource(int type, const QUrl& name) {
    if (type == QTextDocument::ImageResource) {
        const QPixmap pixmap = SharedPicture(LocalPathOf(name));
        if (!pixmap.isNull())
            return pixmap;
    }
    return QTextDocument::loadResource(type, name);
}
