// The packers that write through a caller's QZipWriter. QZipWriter cannot write Zip64, holds each
// file whole in memory, records the time of packing and loses the owner's execute bit; the last two
// are patched into the archive once the writer has closed its file.

#include <LxUIKit/Zip/LxZip.h>

#include "ZipQtWriter_p.h"
#include "Zip_p.h"

#include <LxCore/FrameWork.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QtGui/private/qzipwriter_p.h>

#include <QDateTime>
#include <QFile>
#include <QHash>
#include <QVector>

namespace _zip {
namespace {

// Record layouts this file patches (all little-endian).
constexpr quint32 kEndOfCentralDirSignature = 0x06054b50;
constexpr int kEndOfCentralDirBytes = 22;
constexpr int kMaxCommentBytes = 0xffff;
constexpr int kEndEntryCountAt = 10;
constexpr int kEndDirSizeAt = 12;
constexpr int kEndDirOffsetAt = 16;
constexpr quint32 kCentralHeaderSignature = 0x02014b50;
constexpr int kCentralHeaderBytes = 46;
constexpr int kCentralMadeByAt = 4;
constexpr int kCentralTimeAt = 12;
constexpr int kCentralNameLengthAt = 28;
constexpr int kCentralExtraLengthAt = 30;
constexpr int kCentralCommentLengthAt = 32;
constexpr int kCentralAttributesAt = 38;
constexpr int kCentralLocalOffsetAt = 42;
constexpr int kLocalTimeAt = 10;
constexpr int kHostUnix = 3;
constexpr quint32 kUnixTypeMask = 0170000;

// What each entry must record, stamped into the archive once its writer has closed the file.
struct EntryMeta {
    QDateTime dtModified;
    QFile::Permissions permissions;
};
using EntryMetas = QHash<QString, EntryMeta>;
QHash<QZipWriter*, EntryMetas>& PendingMetas() {
    static QHash<QZipWriter*, EntryMetas> s;
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
QByteArray LeBytes(quint32 v, int n) {
    QByteArray b(n, '\0');
    for (int i = 0; i < n; ++i)
        b[i] = char((v >> (8 * i)) & 0xff);
    return b;
}

struct CentralEntry {
    QString strName;            // the name exactly as stored
    qint64 i64Central = 0;      // offset of its central directory record
    qint64 i64Local = 0;        // offset of its local header
    quint32 u32Attributes = 0;  // external attributes; the Unix mode sits in the high half
};

// The central directory of an archive QZipWriter has just written (never Zip64).
bool ReadCentralDirectory(QFile& f, QVector<CentralEntry>& out) {
    const qint64 size = f.size();
    const qint64 tailSize = qMin<qint64>(size, kEndOfCentralDirBytes + kMaxCommentBytes);
    if (tailSize < kEndOfCentralDirBytes || !f.seek(size - tailSize))
        return false;
    const QByteArray tail = f.read(tailSize);
    const uchar* t = reinterpret_cast<const uchar*>(tail.constData());
    int end = -1;
    for (int i = tail.size() - kEndOfCentralDirBytes; i >= 0 && end < 0; --i)
        if (Le32(t + i) == kEndOfCentralDirSignature)
            end = i;
    if (end < 0)
        return false;
    const int count = Le16(t + end + kEndEntryCountAt);
    const qint64 dirSize = Le32(t + end + kEndDirSizeAt);
    const qint64 dirOffset = Le32(t + end + kEndDirOffsetAt);
    if (dirOffset + dirSize > size || !f.seek(dirOffset))
        return false;
    const QByteArray dir = f.read(dirSize);
    const uchar* p = reinterpret_cast<const uchar*>(dir.constData());
    qint64 pos = 0;
    out.clear();
    for (int e = 0; e < count; ++e) {
        if (pos + kCentralHeaderBytes > dir.size() || Le32(p + pos) != kCentralHeaderSignature)
            return false;
        const int nameLen = Le16(p + pos + kCentralNameLengthAt);
        if (pos + kCentralHeaderBytes + nameLen > dir.size())
            return false;
        CentralEntry entry;
        // Decoded as QZipWriter encoded it.
        entry.strName = QString::fromLocal8Bit(reinterpret_cast<const char*>(p + pos + kCentralHeaderBytes), nameLen);
        entry.i64Central = dirOffset + pos;
        entry.i64Local = Le32(p + pos + kCentralLocalOffsetAt);
        entry.u32Attributes =
            (Le16(p + pos + kCentralMadeByAt) >> 8) == kHostUnix ? Le32(p + pos + kCentralAttributesAt) : 0;
        out.push_back(entry);
        pos += kCentralHeaderBytes + nameLen + Le16(p + pos + kCentralExtraLengthAt) +
               Le16(p + pos + kCentralCommentLengthAt);
    }
    return true;
}

// Rewrites the DOS time and date of the named entries, in the central directory and in each local
// header, and the permission bits of their Unix mode (the file-type bits are kept).
bool PatchEntries(const QString& zipPath, const EntryMetas& metas) {
    QFile f(zipPath);
    QVector<CentralEntry> entries;
    if (!f.open(QIODevice::ReadWrite) || !ReadCentralDirectory(f, entries))
        return false;
    bool ok = true;
    for (const CentralEntry& e : qAsConst(entries)) {
        auto it = metas.constFind(e.strName);
        if (it == metas.constEnd())
            continue;
        if (it->dtModified.isValid()) {
            const QByteArray stamp = LeBytes(DosTime(it->dtModified), 2) + LeBytes(DosDate(it->dtModified), 2);
            ok = f.seek(e.i64Central + kCentralTimeAt) && f.write(stamp) == 4 && ok;
            ok = f.seek(e.i64Local + kLocalTimeAt) && f.write(stamp) == 4 && ok;
        }
        const quint32 type = (e.u32Attributes >> 16) & kUnixTypeMask;
        const quint32 attrs = ((type | detail::PermissionsToMode(it->permissions)) << 16) | (e.u32Attributes & 0xffff);
        ok = f.seek(e.i64Central + kCentralAttributesAt) && f.write(LeBytes(attrs, 4)) == 4 && ok;
    }
    return ok;
}

// Remembers an entry's time and mode; the first entry of a writer arranges the patch for when its
// file goes away (QZipWriter closes the file, writing the central directory, before deleting it).
void RecordMeta(QZipWriter* writer, const QString& entry, const QFileInfo& info) {
    auto* file = qobject_cast<QFile*>(writer->device());
    if (!file)
        return;
    auto& metas = PendingMetas();
    if (!metas.contains(writer)) {
        const QString zipPath = file->fileName();
        QObject::connect(file, &QObject::destroyed, [writer, zipPath] {
            if (!PatchEntries(zipPath, PendingMetas().take(writer)))
                LXUIKIT_LOG_WARN("cannot record modification times and modes in {}", zipPath);
        });
    }
    metas[writer].insert(entry, EntryMeta{info.lastModified(), info.permissions()});
}

qint64 WrittenBytes(QZipWriter& writer) {
    QIODevice* dev = writer.device();
    return dev ? dev->size() : 0;
}

class CQtWriterSink final : public detail::IPackSink {
public:
    explicit CQtWriterSink(QZipWriter& writer) : m_writer(writer) {}

    bool AddFolder(const QFileInfo& info, const QString& entry) override {
        m_writer.setCreationPermissions(info.permissions());
        m_writer.addDirectory(entry);
        RecordMeta(&m_writer, entry, info);
        return true;
    }

    bool AddFile(const QFileInfo& info, const QString& entry, const QString& shownPath) override {
        if (info.size() >= kMaxZipBytes || WrittenBytes(m_writer) + info.size() >= kMaxZipBytes) {
            LXUIKIT_LOG_ERROR("{} ({} bytes) is too large for a zip archive without Zip64; not added", shownPath,
                              info.size());
            return false;
        }
        QFile file(info.absoluteFilePath());
        if (!file.open(QIODevice::ReadOnly)) {
            LXUIKIT_LOG_ERROR("{} can not open! ", shownPath);
            return false;
        }
        const QByteArray data = file.readAll();
        file.close();
        FrameWork::AddIORead(info.absoluteFilePath(), uint64_t(data.size()));
        m_writer.setCreationPermissions(info.permissions());
        m_writer.addFile(entry, data);
        RecordMeta(&m_writer, entry, info);
        if (m_writer.status() != QZipWriter::NoError) {
            LXUIKIT_LOG_ERROR("unable to write:{}", entry);
            return false;
        }
        // QZipWriter does not look at what its device answers to a write; a full disk shows only
        // here, once the file's buffer has been pushed out.
        auto* archive = qobject_cast<QFileDevice*>(m_writer.device());
        if (archive && (!archive->flush() || archive->error() != QFileDevice::NoError)) {
            LXUIKIT_LOG_ERROR("unable to write:{} ({})", entry, archive->errorString());
            return false;
        }
        return true;
    }

private:
    QZipWriter& m_writer;
};

}  // namespace

namespace compress {

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature the host's code calls
bool CompressDir(QSharedPointer<QZipWriter> writer, const QString& dirPath, const QString& parentEntry,
                 const QString& stripPrefix) {
    if (!writer)
        return false;
    CQtWriterSink sink(*writer);
    return detail::PackFolder(sink, dirPath, parentEntry, stripPrefix);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature the host's code calls
bool CompressFile(QSharedPointer<QZipWriter> writer, const QString& filePath, const QString& parentEntry,
                  const QString& stripPrefix) {
    if (!writer)
        return false;
    CQtWriterSink sink(*writer);
    return detail::PackFile(sink, filePath, parentEntry, stripPrefix);
}

}  // namespace compress
}  // namespace _zip
