#pragma once
// Hand-built zip archives: headers that claim whatever a test needs, so that the extractor can be
// shown lies no archiver would write.

#include <QByteArray>
#include <QList>

namespace lxtest {

struct RawZipEntry {
    QByteArray name;
    QByteArray stored;   // the bytes as they sit in the archive
    quint16 method = 8;  // 0 stored, 8 deflated
    quint16 flags = 0;
    quint32 crc = 0;        // claimed
    quint32 packed = 0;     // claimed size in the archive
    quint32 size = 0;       // claimed unpacked size
    int sharesDataOf = -1;  // >= 0: no data of its own, its central record points at that entry's
};

// An honest deflated entry of `content`.
RawZipEntry DeflatedEntry(const QByteArray& name, const QByteArray& content);
// Raw deflate (no zlib header), as zip stores it.
QByteArray Deflate(const QByteArray& content, int level = 9);
// Local headers and data, then the central directory and its end record.
QByteArray RawZip(const QList<RawZipEntry>& entries);

}  // namespace lxtest
