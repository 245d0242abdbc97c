#include <LxUIKit/Zip/LxZip.h>

#include <LxCore/FrameWork.h>
#include <LxCore/LxLog.h>

#include <QtGui/private/qzipreader_p.h>
#include <QtGui/private/qzipwriter_p.h>

#include <qplatformdefs.h>
#include <QDataStream>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <array>

namespace _zip {
namespace {

// What each entry must record, stamped into the archive once it is closed: QZipWriter always
// records the time of packing and loses the owner's execute bit, so both are patched in afterwards
// (see PatchEntries).
struct EntryMeta {
    QDateTime dtModified;
    QFile::Permissions permissions;
};
using EntryMetas = QHash<QString, EntryMeta>;
QHash<QZipWriter*, EntryMetas>& PendingMetas() {
    static QHash<QZipWriter*, EntryMetas> s;
    return s;
}

// Unix mode bits and the permissions they stand for (owner bits cover both Owner and User).
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

quint32 PermissionsToMode(QFile::Permissions p) {
    quint32 m = 0;
    for (const auto& bit : kModeBits)
        if (p & bit.permissions)
            m |= bit.u32Bit;
    return m;
}

QFile::Permissions ModeToPermissions(quint32 m) {
    QFile::Permissions p;
    for (const auto& bit : kModeBits)
        if (m & bit.u32Bit)
            p |= bit.permissions;
    return p;
}

quint16 DosTime(const QDateTime& dt) {
    const QTime t = dt.time();
    return quint16((t.hour() << 11) | (t.minute() << 5) | (t.second() / 2));
}
quint16 DosDate(const QDateTime& dt) {
    const QDate d = dt.date();
    const int year = qBound(1980, d.year(), 2107);
    return quint16(((year - 1980) << 9) | (d.month() << 5) | d.day());
}

quint16 Le16(const uchar* p) { return quint16(p[0] | (p[1] << 8)); }
quint32 Le32(const uchar* p) { return quint32(p[0] | (p[1] << 8) | (p[2] << 16) | (quint32(p[3]) << 24)); }
QByteArray LeBytes(quint32 v, int n) {
    QByteArray b(n, '\0');
    for (int i = 0; i < n; ++i)
        b[i] = char((v >> (8 * i)) & 0xff);
    return b;
}

quint32 Crc32(const QByteArray& data) {
    static const auto table = [] {
        std::array<quint32, 256> t{};
        for (quint32 i = 0; i < 256; ++i) {
            quint32 c = i;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[i] = c;
        }
        return t;
    }();
    quint32 crc = 0xFFFFFFFFu;
    for (char ch : data)
        crc = table[(crc ^ quint8(ch)) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

struct CentralEntry {
    QString strName;            // the name exactly as stored
    qint64 i64Central = 0;      // offset of its central directory record
    qint64 i64Local = 0;        // offset of its local header
    quint32 u32Attributes = 0;  // external attributes; the Unix mode sits in the high half
    bool bUnix = false;         // made on a Unix host, so the mode is meaningful
};

// Reads the central directory of an archive: the names as stored, in archive order. QZipReader only
// hands out names with leading "." and "/" eaten (so ".hidden" and "/etc/x" both look harmless),
// which is not good enough to judge an entry or to restore a hidden file's name.
bool ReadCentralDirectory(QFile& f, QVector<CentralEntry>& out) {
    const qint64 size = f.size();
    const qint64 tailSize = qMin<qint64>(size, 22 + 0xffff);
    if (tailSize < 22 || !f.seek(size - tailSize))
        return false;
    const QByteArray tail = f.read(tailSize);
    const uchar* t = reinterpret_cast<const uchar*>(tail.constData());
    int eocd = -1;
    for (int i = tail.size() - 22; i >= 0; --i)
        if (Le32(t + i) == 0x06054b50) {
            eocd = i;
            break;
        }
    if (eocd < 0)
        return false;
    const int count = Le16(t + eocd + 10);
    const qint64 cdSize = Le32(t + eocd + 12);
    const qint64 cdOffset = Le32(t + eocd + 16);
    if (cdOffset + cdSize > size || !f.seek(cdOffset))
        return false;
    const QByteArray cd = f.read(cdSize);
    const uchar* p = reinterpret_cast<const uchar*>(cd.constData());
    qint64 pos = 0;
    out.clear();
    for (int e = 0; e < count; ++e) {
        if (pos + 46 > cd.size() || Le32(p + pos) != 0x02014b50)
            return false;
        const int nameLen = Le16(p + pos + 28);
        const int extraLen = Le16(p + pos + 30);
        const int commentLen = Le16(p + pos + 32);
        if (pos + 46 + nameLen > cd.size())
            return false;
        CentralEntry entry;
        // Decoded as QZipReader::fileData() expects its names.
        entry.strName = QString::fromLocal8Bit(reinterpret_cast<const char*>(p + pos + 46), nameLen);
        entry.i64Central = cdOffset + pos;
        entry.i64Local = Le32(p + pos + 42);
        entry.u32Attributes = Le32(p + pos + 38);
        entry.bUnix = (Le16(p + pos + 4) >> 8) == 3;
        out.push_back(entry);
        pos += 46 + nameLen + extraLen + commentLen;
    }
    return true;
}

// Rewrites the DOS time and date of the named entries, in the central directory and in each local
// header, and the permission bits of their Unix mode (the file-type bits are kept).
bool PatchEntries(const QString& zipPath, const EntryMetas& metas) {
    if (metas.isEmpty())
        return true;
    QFile f(zipPath);
    QVector<CentralEntry> entries;
    if (!f.open(QIODevice::ReadWrite) || !ReadCentralDirectory(f, entries))
        return false;
    bool ok = true;
    for (const CentralEntry& e : entries) {
        auto it = metas.constFind(e.strName);
        if (it == metas.constEnd())
            continue;
        if (it->dtModified.isValid()) {
            const QByteArray stamp = LeBytes(DosTime(it->dtModified), 2) + LeBytes(DosDate(it->dtModified), 2);
            ok = f.seek(e.i64Central + 12) && f.write(stamp) == 4 && ok;
            ok = f.seek(e.i64Local + 10) && f.write(stamp) == 4 && ok;
        }
        const quint32 type = (e.u32Attributes >> 16) & 0170000;
        const quint32 attrs = ((type | PermissionsToMode(it->permissions)) << 16) | (e.u32Attributes & 0xffff);
        ok = f.seek(e.i64Central + 38) && f.write(LeBytes(attrs, 4)) == 4 && ok;
    }
    return ok;
}

// Opens the writer; the deleter closes it and stamps the recorded times and modes.
QSharedPointer<QZipWriter> OpenWriter(const QString& zipPath) {
    QDir().mkpath(QFileInfo(zipPath).absolutePath());
    auto finish = [zipPath](QZipWriter* w) {
        const EntryMetas metas = PendingMetas().take(w);
        w->close();
        delete w;
        if (!PatchEntries(zipPath, metas))
            LXUIKIT_LOG_WARN("cannot record modification times and modes in {}", zipPath);
    };
    return QSharedPointer<QZipWriter>(new QZipWriter(zipPath, QIODevice::WriteOnly | QIODevice::Truncate), finish);
}

// An absolute path with trailing separators, "." and ".." resolved, so that "logs/", "logs/." and
// "x/../logs" all name the folder "logs".
QString NormalisedPath(const QString& path) { return QDir::cleanPath(QFileInfo(path).absoluteFilePath()); }

// The prefix removed from every entry of an item given to pack: its parent folder with one "/".
QString ParentPrefix(const QString& normalisedPath) {
    QString parent = QFileInfo(normalisedPath).absolutePath();
    if (!parent.endsWith(QLatin1Char('/')))
        parent += QLatin1Char('/');
    return parent;
}

QString NormalisedPrefix(const QString& prefix) {
    if (prefix.isEmpty())
        return prefix;
    const QString clean = NormalisedPath(prefix);
    return clean.endsWith(QLatin1Char('/')) ? clean : clean + QLatin1Char('/');
}

// The entry name of an item: its path below the strip prefix, or, when the prefix does not hold it,
// its name under the parent entry. Never absolute: the extractor refuses absolute names.
QString EntryName(const QString& absPath, const QString& parentEntry, const QString& stripPrefix) {
    QString name = !stripPrefix.isEmpty() && absPath.startsWith(stripPrefix, Qt::CaseSensitive)
                       ? absPath.mid(stripPrefix.size())
                       : parentEntry + QFileInfo(absPath).fileName();
    while (name.startsWith(QLatin1Char('/')))
        name.remove(0, 1);
    return name;
}

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

qint64 WrittenBytes(const QSharedPointer<QZipWriter>& writer) {
    QIODevice* dev = writer->device();
    return dev ? dev->size() : 0;
}

// An entry name that stays inside the destination, or an empty string when it would not.
QString SafeRelativePath(const QString& entry) {
    QString name = entry;
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (name.isEmpty() || name.startsWith(QLatin1Char('/')))
        return QString();
    if (name.size() >= 2 && name.at(1) == QLatin1Char(':'))  // "C:..." drive paths
        return QString();
    const QString clean = QDir::cleanPath(name);
    if (clean == QLatin1String("..") || clean.startsWith(QLatin1String("../")) || clean == QLatin1String("."))
        return QString();
    return clean;
}

bool IsInside(const QString& canonicalRoot, const QString& path) {
    return path == canonicalRoot || path.startsWith(canonicalRoot + QLatin1Char('/'));
}

}  // namespace

bool ExtractDir(const QString& zipPath, const QString& destDir) {
    QZipReader reader(zipPath, QIODevice::ReadOnly);
    if (!reader.exists()) {
        LXUIKIT_LOG_ERROR("{} not found! ", zipPath);
        return false;
    }
    const QFileInfo destInfo(destDir);
    if (destInfo.exists() && !destInfo.isDir()) {
        LXUIKIT_LOG_ERROR("{} is not a folder! ", destDir);
        return false;
    }
    if (!destInfo.exists() && !QDir().mkpath(destDir)) {
        LXUIKIT_LOG_ERROR("Cannot create directory: {} ", destDir);
        return false;
    }
    if (reader.status() != QZipReader::NoError) {
        LXUIKIT_LOG_ERROR("{} cannot be read as a zip archive (status {})", zipPath, int(reader.status()));
        return false;
    }

    // Check every entry before writing anything.
    QVector<CentralEntry> rawEntries;
    {
        QFile f(zipPath);
        if (!f.open(QIODevice::ReadOnly) || !ReadCentralDirectory(f, rawEntries) ||
            rawEntries.size() != reader.count()) {
            LXUIKIT_LOG_ERROR("{} cannot be read as a zip archive", zipPath);
            return false;
        }
    }
    const QVector<QZipReader::FileInfo> entries = reader.fileInfoList();
    QVector<QString> relPaths;
    relPaths.reserve(entries.size());
    for (int i = 0; i < entries.size(); ++i) {
        const QString& raw = rawEntries[i].strName;
        if (entries[i].isSymLink) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} is a symbolic link", zipPath, raw);
            return false;
        }
        const QString rel = SafeRelativePath(raw);
        if (rel.isEmpty()) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} leaves the destination", zipPath, raw);
            return false;
        }
        relPaths.push_back(rel);
    }

    const QString root = QFileInfo(destDir).canonicalFilePath();
    QVector<QPair<QString, QDateTime>> dirTimes;
    for (int i = 0; i < entries.size(); ++i) {
        const QZipReader::FileInfo& e = entries[i];
        const QString target = root + QLatin1Char('/') + relPaths[i];
        const QString dir = e.isDir ? target : QFileInfo(target).absolutePath();
        if (!QDir().mkpath(dir)) {
            LXUIKIT_LOG_ERROR("Cannot create directory: {} ", dir);
            return false;
        }
        // A link already on disk must not carry a write outside the destination.
        const QString realDir = QFileInfo(dir).canonicalFilePath();
        if (!IsInside(root, realDir)) {
            LXUIKIT_LOG_ERROR("refused entry {}: {} resolves outside {}", relPaths[i], dir, destDir);
            return false;
        }
        if (e.isDir) {
            if (e.lastModified.isValid())
                dirTimes.push_back({target, e.lastModified});
            continue;
        }
        const QByteArray data = reader.fileData(rawEntries[i].strName);
        if (data.size() != e.size || Crc32(data) != e.crc) {
            LXUIKIT_LOG_ERROR("entry {} of {} is corrupt ({} of {} bytes)", relPaths[i], zipPath, data.size(), e.size);
            return false;
        }
        if (QFileInfo(target).isSymLink())
            QFile::remove(target);  // never write through a link
        QFile out(target);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(data) != data.size()) {
            LXUIKIT_LOG_ERROR("cannot write {}: {}", target, out.errorString());
            return false;
        }
        if (!out.flush()) {
            LXUIKIT_LOG_ERROR("cannot write {}: {}", target, out.errorString());
            return false;
        }
        FrameWork::AddIOWrite(target, uint64_t(data.size()));
        if (rawEntries[i].bUnix && (rawEntries[i].u32Attributes >> 16) != 0)
            out.setPermissions(ModeToPermissions(rawEntries[i].u32Attributes >> 16) | QFile::ReadOwner |
                               QFile::WriteOwner);
        if (e.lastModified.isValid())
            out.setFileTime(e.lastModified, QFileDevice::FileModificationTime);
        out.close();
    }
    // Folders last: writing their files changed their times.
    for (auto it = dirTimes.crbegin(); it != dirTimes.crend(); ++it) {
        QFile d(it->first);
        if (d.open(QIODevice::ReadOnly))
            d.setFileTime(it->second, QFileDevice::FileModificationTime);
    }
    return true;
}

bool CompressFiles(const std::vector<QString>& paths, const QString& zipPath) {
    if (paths.empty()) {
        LXUIKIT_LOG_ERROR("files is empty");
        return false;
    }
    QSharedPointer<QZipWriter> writer = OpenWriter(zipPath);
    if (!writer->isWritable()) {
        LXUIKIT_LOG_ERROR("unable to write:{}", zipPath);
        return false;
    }
    bool ok = true;
    for (const QString& path : paths) {
        const QString absPath = NormalisedPath(path);
        const QString prefix = ParentPrefix(absPath);
        switch (KindOf(absPath, true)) {
        case ItemKind::Folder: ok = compress::CompressDir(writer, absPath, QString(), prefix) && ok; break;
        case ItemKind::Other: LogSkipped(absPath); break;
        default: ok = compress::CompressFile(writer, absPath, QString(), prefix) && ok; break;
        }
    }
    return ok;
}

bool CompressDir(const QString& dirPath, const QString& zipPath) {
    return CompressFiles(std::vector<QString>{dirPath}, zipPath);
}

namespace compress {

bool CompressDir(QSharedPointer<QZipWriter> writer, const QString& dirPath, const QString& parentEntry,
                 const QString& stripPrefix) {
    if (!writer)
        return false;
    const QString absPath = NormalisedPath(dirPath);
    const QFileInfo fi(absPath);
    if (!fi.isDir()) {
        LXUIKIT_LOG_ERROR("{}  not found! ", dirPath);
        return false;
    }
    const QString prefix = NormalisedPrefix(stripPrefix);
    const QString entry = EntryName(absPath, parentEntry, prefix) + QLatin1Char('/');
    if (entry != QLatin1String("/")) {  // the file system root has no name of its own
        writer->setCreationPermissions(fi.permissions());
        writer->addDirectory(entry);
        PendingMetas()[writer.data()].insert(entry, EntryMeta{fi.lastModified(), fi.permissions()});
    }
    const QString childParent = entry == QLatin1String("/") ? QString() : entry;

    // Folders first, then files, each in name order; links are left out, and anything else that
    // cannot be read as a file (socket, FIFO, device) is skipped rather than failing the archive.
    const QStringList names =
        QDir(absPath).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    QStringList files;
    bool ok = true;
    for (const QString& name : names) {
        const QString child = absPath + QLatin1Char('/') + name;
        switch (KindOf(child, false)) {
        case ItemKind::Folder: ok = CompressDir(writer, child, childParent, prefix) && ok; break;
        case ItemKind::File: files << child; break;
        case ItemKind::Other: LogSkipped(child); break;
        case ItemKind::Link:
        case ItemKind::Missing: break;
        }
    }
    for (const QString& file : files)
        ok = CompressFile(writer, file, childParent, prefix) && ok;
    return ok;
}

bool CompressFile(QSharedPointer<QZipWriter> writer, const QString& filePath, const QString& parentEntry,
                  const QString& stripPrefix) {
    if (!writer)
        return false;
    const QString absPath = NormalisedPath(filePath);
    const ItemKind kind = KindOf(absPath, true);
    if (kind == ItemKind::Other) {
        LogSkipped(absPath);
        return true;
    }
    const QFileInfo fi(absPath);
    if (kind != ItemKind::File) {
        LXUIKIT_LOG_ERROR("{}  not found! ", filePath);
        return false;
    }
    if (fi.size() >= kMaxZipBytes || WrittenBytes(writer) + fi.size() >= kMaxZipBytes) {
        LXUIKIT_LOG_ERROR("{} ({} bytes) is too large for a zip archive without Zip64; not added", filePath, fi.size());
        return false;
    }
    QFile file(absPath);
    if (!file.open(QIODevice::ReadOnly)) {
        LXUIKIT_LOG_ERROR("{} can not open! ", filePath);
        return false;
    }
    const QByteArray data = file.readAll();
    file.close();
    FrameWork::AddIORead(absPath, uint64_t(data.size()));
    const QString entry = EntryName(absPath, parentEntry, NormalisedPrefix(stripPrefix));
    writer->setCreationPermissions(fi.permissions());
    writer->addFile(entry, data);
    PendingMetas()[writer.data()].insert(entry, EntryMeta{fi.lastModified(), fi.permissions()});
    if (writer->status() != QZipWriter::NoError) {
        LXUIKIT_LOG_ERROR("unable to write:{}", entry);
        return false;
    }
    return true;
}

}  // namespace compress
}  // namespace _zip
