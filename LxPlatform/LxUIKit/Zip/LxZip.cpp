#include <LxUIKit/Zip/LxZip.h>

#include <LxCore/FrameWork.h>
#include <LxCore/LxLog.h>

#include <QtGui/private/qzipreader_p.h>
#include <QtGui/private/qzipwriter_p.h>
#include <QDataStream>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

namespace _zip {
namespace {

// Modification times to stamp into the archive once it is closed: QZipWriter always records the
// time of packing, so the real times are patched in afterwards (see PatchEntryTimes).
using EntryTimes = QHash<QString, QDateTime>;
QHash<QZipWriter*, EntryTimes>& PendingTimes() {
    static QHash<QZipWriter*, EntryTimes> s;
    return s;
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
void Put16(uchar* p, quint16 v) {
    p[0] = uchar(v & 0xff);
    p[1] = uchar(v >> 8);
}

// Rewrites the DOS time and date of the named entries, in the central directory and in each local
// header. The archive was just written by QZipWriter, so its layout is the plain one.
bool PatchEntryTimes(const QString& zipPath, const EntryTimes& times) {
    if (times.isEmpty())
        return true;
    QFile f(zipPath);
    if (!f.open(QIODevice::ReadWrite))
        return false;
    QByteArray data = f.readAll();
    const int n = data.size();
    uchar* p = reinterpret_cast<uchar*>(data.data());
    int eocd = -1;
    for (int i = n - 22; i >= 0 && i >= n - 22 - 0xffff; --i)
        if (Le32(p + i) == 0x06054b50) {
            eocd = i;
            break;
        }
    if (eocd < 0)
        return false;
    const int count = Le16(p + eocd + 10);
    qint64 pos = Le32(p + eocd + 16);
    for (int e = 0; e < count; ++e) {
        if (pos + 46 > n || Le32(p + pos) != 0x02014b50)
            return false;
        const int nameLen = Le16(p + pos + 28);
        const int extraLen = Le16(p + pos + 30);
        const int commentLen = Le16(p + pos + 32);
        const qint64 local = Le32(p + pos + 42);
        if (pos + 46 + nameLen > n || local + 30 > n)
            return false;
        const QString name = QString::fromUtf8(reinterpret_cast<const char*>(p + pos + 46), nameLen);
        auto it = times.constFind(name);
        if (it != times.constEnd() && it->isValid()) {
            Put16(p + pos + 12, DosTime(*it));
            Put16(p + pos + 14, DosDate(*it));
            Put16(p + local + 10, DosTime(*it));
            Put16(p + local + 12, DosDate(*it));
        }
        pos += 46 + nameLen + extraLen + commentLen;
    }
    f.seek(0);
    return f.write(data) == n;
}

// Opens the writer; the deleter closes it and stamps the recorded times.
QSharedPointer<QZipWriter> OpenWriter(const QString& zipPath) {
    QDir().mkpath(QFileInfo(zipPath).absolutePath());
    return QSharedPointer<QZipWriter>(new QZipWriter(zipPath, QIODevice::WriteOnly | QIODevice::Truncate),
                                      [zipPath](QZipWriter* w) {
                                          const EntryTimes times = PendingTimes().take(w);
                                          w->close();
                                          delete w;
                                          if (!PatchEntryTimes(zipPath, times))
                                              LXUIKIT_LOG_WARN("cannot record modification times in {}", zipPath);
                                      });
}

QString ParentPrefix(const QString& path) {
    QString parent = QFileInfo(path).absoluteDir().absolutePath();
    if (!parent.endsWith(QLatin1Char('/')))
        parent += QLatin1Char('/');
    return parent;
}

QString StripPrefix(const QString& absPath, const QString& stripPrefix) {
    if (!stripPrefix.isEmpty() && absPath.startsWith(stripPrefix, Qt::CaseSensitive))
        return absPath.mid(stripPrefix.size());
    return absPath;
}

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
    const QVector<QZipReader::FileInfo> entries = reader.fileInfoList();
    QVector<QString> relPaths;
    relPaths.reserve(entries.size());
    for (const QZipReader::FileInfo& e : entries) {
        if (e.isSymLink) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} is a symbolic link", zipPath, e.filePath);
            return false;
        }
        const QString rel = SafeRelativePath(e.filePath);
        if (rel.isEmpty()) {
            LXUIKIT_LOG_ERROR("refused {}: entry {} leaves the destination", zipPath, e.filePath);
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
            LXUIKIT_LOG_ERROR("refused entry {}: {} resolves outside {}", e.filePath, dir, destDir);
            return false;
        }
        if (e.isDir) {
            if (e.lastModified.isValid())
                dirTimes.push_back({target, e.lastModified});
            continue;
        }
        const QByteArray data = reader.fileData(e.filePath);
        if (data.size() != e.size) {
            LXUIKIT_LOG_ERROR("entry {} of {} is corrupt ({} of {} bytes)", e.filePath, zipPath, data.size(), e.size);
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
        if (e.permissions)
            out.setPermissions(e.permissions | QFile::ReadOwner | QFile::WriteOwner);
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
        const QFileInfo fi(path);
        const QString prefix = ParentPrefix(fi.absoluteFilePath());
        if (fi.isDir())
            ok = compress::CompressDir(writer, fi.absoluteFilePath(), QString(), prefix) && ok;
        else
            ok = compress::CompressFile(writer, fi.absoluteFilePath(), QString(), prefix) && ok;
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
    const QFileInfo fi(dirPath);
    if (!fi.exists() || !fi.isDir()) {
        LXUIKIT_LOG_ERROR("{}  not found! ", dirPath);
        return false;
    }
    const QString entry =
        parentEntry.isEmpty() ? fi.fileName() + QLatin1Char('/') : parentEntry + fi.fileName() + QLatin1Char('/');
    const QString absPath = fi.absoluteFilePath();
    const QString dirEntry = StripPrefix(absPath, stripPrefix) + QLatin1Char('/');
    writer->setCreationPermissions(fi.permissions());
    writer->addDirectory(dirEntry);
    PendingTimes()[writer.data()].insert(dirEntry, fi.lastModified());

    const QDir dir(absPath);
    bool ok = true;
    const QFileInfoList subDirs =
        dir.entryInfoList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks, QDir::Name);
    for (const QFileInfo& sub : subDirs)
        ok = CompressDir(writer, sub.absoluteFilePath(), entry, stripPrefix) && ok;
    const QFileInfoList files =
        dir.entryInfoList(QDir::Files | QDir::Hidden | QDir::System | QDir::NoSymLinks, QDir::Name);
    for (const QFileInfo& file : files)
        ok = CompressFile(writer, file.absoluteFilePath(), entry, stripPrefix) && ok;
    return ok;
}

bool CompressFile(QSharedPointer<QZipWriter> writer, const QString& filePath, const QString& parentEntry,
                  const QString& stripPrefix) {
    Q_UNUSED(parentEntry);  // the entry name comes from the path; the parent is implied by it
    if (!writer)
        return false;
    const QFileInfo fi(filePath);
    if (!fi.exists() || !fi.isFile()) {
        LXUIKIT_LOG_ERROR("{}  not found! ", filePath);
        return false;
    }
    if (fi.size() >= kMaxZipBytes || WrittenBytes(writer) + fi.size() >= kMaxZipBytes) {
        LXUIKIT_LOG_ERROR("{} ({} bytes) is too large for a zip archive without Zip64; not added", filePath, fi.size());
        return false;
    }
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        LXUIKIT_LOG_ERROR("{} can not open! ", filePath);
        return false;
    }
    const QByteArray data = file.readAll();
    file.close();
    FrameWork::AddIORead(filePath, uint64_t(data.size()));
    const QString entry = StripPrefix(fi.absoluteFilePath(), stripPrefix);
    writer->setCreationPermissions(fi.permissions());
    writer->addFile(entry, data);
    PendingTimes()[writer.data()].insert(entry, fi.lastModified());
    if (writer->status() != QZipWriter::NoError) {
        LXUIKIT_LOG_ERROR("unable to write:{}", entry);
        return false;
    }
    return true;
}

}  // namespace compress
}  // namespace _zip
