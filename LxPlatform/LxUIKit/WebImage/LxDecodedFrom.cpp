#include <LxUIKit/WebImage/LxDecodedFrom_p.h>

#include <LxUIKit/WebImage/LxWebImageCacheMgr.h>

#include <QDateTime>
#include <QFileInfo>
#include <QHash>

namespace lxuikit_image {
namespace {

struct Entry {
    QString strStamp;
    std::uintptr_t identity = 0;
};
constexpr int kMaxRemembered = 4096;

QHash<unsigned long, Entry>& Table(CachedKind kind) {
    static QHash<unsigned long, Entry> s_tables[2];
    return s_tables[kind == CachedKind::Pixmap ? 0 : 1];
}

}  // namespace

QString FileStamp(const QString& filePath) {
    const QFileInfo info(filePath);
    if (!info.exists())
        return QString();
    return QStringLiteral("%1|%2|%3|%4")
        .arg(info.absoluteFilePath())
        .arg(info.size())
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(info.metadataChangeTime().toMSecsSinceEpoch());
}

void RememberDecoded(CachedKind kind, const QString& url, const QString& stamp, std::uintptr_t identity) {
    QHash<unsigned long, Entry>& table = Table(kind);
    if (table.size() >= kMaxRemembered)
        table.clear();
    table.insert(CLxWebImageCacheMgr::KeyOf(url), Entry{stamp, identity});
}

bool WasDecodedFrom(CachedKind kind, const QString& url, const QString& stamp, std::uintptr_t identity) {
    if (stamp.isEmpty() || identity == 0)
        return false;
    const QHash<unsigned long, Entry>& table = Table(kind);
    const auto it = table.constFind(CLxWebImageCacheMgr::KeyOf(url));
    return it != table.constEnd() && it->identity == identity && it->strStamp == stamp;
}

}  // namespace lxuikit_image
