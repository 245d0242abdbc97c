#include "Zip_p.h"

#include <LxUIKit/LxUIKitLog_p.h>

#include <qplatformdefs.h>
#include <QDir>

namespace _zip {
namespace detail {
namespace {

enum class ItemKind { Missing, File, Folder, Link, Other };

// What a path is on disk; `followLink` looks through a link given by the caller.
ItemKind KindOf(const QString& path, bool followLink) {
    QT_STATBUF st;
    const QByteArray native = QFile::encodeName(path);
    if ((followLink ? QT_STAT(native.constData(), &st) : QT_LSTAT(native.constData(), &st)) != 0)
        return ItemKind::Missing;
    if (S_ISREG(st.st_mode))
        return ItemKind::File;
    if (S_ISDIR(st.st_mode))
        return ItemKind::Folder;
    if (S_ISLNK(st.st_mode))
        return ItemKind::Link;
    return ItemKind::Other;
}

void LogSkipped(const QString& path) { LXUIKIT_LOG_WARN("{} is not a regular file, folder or link; skipped", path); }

QString NormalisedPrefix(const QString& prefix) {
    if (prefix.isEmpty())
        return prefix;
    const QString clean = NormalisedPath(prefix);
    return clean.endsWith(QLatin1Char('/')) ? clean : clean + QLatin1Char('/');
}

const struct {
    quint32 u32Bit;
    QFile::Permissions permissions;
} kModeBits[] = {
    {0400, QFile::ReadOwner | QFile::ReadUser},
    {0200, QFile::WriteOwner | QFile::WriteUser},
    {0100, QFile::ExeOwner | QFile::ExeUser},
    {040, QFile::ReadGroup},
    {020, QFile::WriteGroup},
    {010, QFile::ExeGroup},
    {04, QFile::ReadOther},
    {02, QFile::WriteOther},
    {01, QFile::ExeOther},
};

}  // namespace

QString NormalisedPath(const QString& path) { return QDir::cleanPath(QFileInfo(path).absoluteFilePath()); }

QString ParentPrefix(const QString& normalisedPath) {
    QString parent = QFileInfo(normalisedPath).absolutePath();
    if (!parent.endsWith(QLatin1Char('/')))
        parent += QLatin1Char('/');
    return parent;
}

QString EntryName(const QString& absPath, const QString& parentEntry, const QString& stripPrefix) {
    QString name = !stripPrefix.isEmpty() && absPath.startsWith(stripPrefix, Qt::CaseSensitive)
                       ? absPath.mid(stripPrefix.size())
                       : parentEntry + QFileInfo(absPath).fileName();
    while (name.startsWith(QLatin1Char('/')))
        name.remove(0, 1);
    return name;
}

quint32 PermissionsToMode(QFile::Permissions permissions) {
    quint32 mode = 0;
    for (const auto& bit : kModeBits)
        if (permissions & bit.permissions)
            mode |= bit.u32Bit;
    return mode;
}

bool PackFolder(IPackSink& sink, const QString& dirPath, const QString& parentEntry, const QString& stripPrefix) {
    const QString absPath = NormalisedPath(dirPath);
    const QFileInfo info(absPath);
    if (!info.isDir()) {
        LXUIKIT_LOG_ERROR("{}  not found! ", dirPath);
        return false;
    }
    const QString prefix = NormalisedPrefix(stripPrefix);
    const QString entry = EntryName(absPath, parentEntry, prefix) + QLatin1Char('/');
    const bool bRoot = entry == QLatin1String("/");  // the file system root has no name of its own
    bool ok = bRoot || sink.AddFolder(info, entry);
    const QString childParent = bRoot ? QString() : entry;

    const QStringList names =
        QDir(absPath).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    QStringList files;
    for (const QString& name : names) {
        const QString child = absPath + QLatin1Char('/') + name;
        switch (KindOf(child, false)) {
        case ItemKind::Folder: ok = PackFolder(sink, child, childParent, prefix) && ok; break;
        case ItemKind::File: files << child; break;
        case ItemKind::Other: LogSkipped(child); break;
        case ItemKind::Link:
        case ItemKind::Missing: break;
        }
    }
    for (const QString& file : qAsConst(files))
        ok = PackFile(sink, file, childParent, prefix) && ok;
    return ok;
}

bool PackFile(IPackSink& sink, const QString& filePath, const QString& parentEntry, const QString& stripPrefix) {
    const QString absPath = NormalisedPath(filePath);
    switch (KindOf(absPath, true)) {
    case ItemKind::File: break;
    case ItemKind::Other: LogSkipped(absPath); return true;  // never opened: a FIFO would block
    default: LXUIKIT_LOG_ERROR("{}  not found! ", filePath); return false;
    }
    return sink.AddFile(QFileInfo(absPath), EntryName(absPath, parentEntry, NormalisedPrefix(stripPrefix)), filePath);
}

bool PackItems(IPackSink& sink, const std::vector<QString>& paths) {
    bool ok = true;
    for (const QString& path : paths) {
        const QString absPath = NormalisedPath(path);
        const QString prefix = ParentPrefix(absPath);
        ok = (KindOf(absPath, true) == ItemKind::Folder ? PackFolder(sink, absPath, QString(), prefix)
                                                        : PackFile(sink, absPath, QString(), prefix)) &&
             ok;
    }
    return ok;
}

}  // namespace detail
}  // namespace _zip
