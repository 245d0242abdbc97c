#include "ZipFixtures.h"

#include <QDataStream>
#include <QVector>

#include <zlib.h>

namespace lxtest {
namespace {

constexpr quint32 kLocalSignature = 0x04034b50;
constexpr quint32 kCentralSignature = 0x02014b50;
constexpr quint32 kEndSignature = 0x06054b50;
constexpr quint16 kVersion = 20;
constexpr quint16 kMadeByUnix = (3 << 8) | kVersion;
constexpr quint32 kRegularFileMode = 0100644;

QDataStream& Le(QDataStream& s) {
    s.setByteOrder(QDataStream::LittleEndian);
    return s;
}

}  // namespace

QByteArray Deflate(const QByteArray& content, int level) {
    z_stream z{};
    deflateInit2(&z, level, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    QByteArray out(int(deflateBound(&z, uLong(content.size()))), '\0');
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.constData()));
    z.avail_in = uInt(content.size());
    z.next_out = reinterpret_cast<Bytef*>(out.data());
    z.avail_out = uInt(out.size());
    deflate(&z, Z_FINISH);
    out.truncate(int(z.total_out));
    deflateEnd(&z);
    return out;
}

RawZipEntry DeflatedEntry(const QByteArray& name, const QByteArray& content) {
    RawZipEntry e;
    e.name = name;
    e.stored = Deflate(content);
    e.crc = quint32(crc32(0, reinterpret_cast<const Bytef*>(content.constData()), uInt(content.size())));
    e.packed = quint32(e.stored.size());
    e.size = quint32(content.size());
    return e;
}

QByteArray RawZip(const QList<RawZipEntry>& entries) {
    QByteArray out;
    QDataStream s(&out, QIODevice::WriteOnly);
    Le(s);
    QVector<quint32> offsets;
    for (const RawZipEntry& e : entries) {
        if (e.sharesDataOf >= 0) {
            offsets << offsets.at(e.sharesDataOf);
            continue;
        }
        offsets << quint32(out.size());
        s << kLocalSignature << kVersion << e.flags << e.method << quint16(0) << quint16(0x21) << e.crc << e.packed
          << e.size << quint16(e.name.size()) << quint16(0);
        s.writeRawData(e.name.constData(), e.name.size());
        s.writeRawData(e.stored.constData(), e.stored.size());
    }
    const quint32 dirOffset = quint32(out.size());
    for (int i = 0; i < entries.size(); ++i) {
        const RawZipEntry& e = entries[i];
        s << kCentralSignature << kMadeByUnix << kVersion << e.flags << e.method << quint16(0) << quint16(0x21) << e.crc
          << e.packed << e.size << quint16(e.name.size()) << quint16(0) << quint16(0) << quint16(0) << quint16(0)
          << (kRegularFileMode << 16) << offsets[i];
        s.writeRawData(e.name.constData(), e.name.size());
    }
    const quint32 dirSize = quint32(out.size()) - dirOffset;
    s << kEndSignature << quint16(0) << quint16(0) << quint16(entries.size()) << quint16(entries.size()) << dirSize
      << dirOffset << quint16(0);
    return out;
}

}  // namespace lxtest
