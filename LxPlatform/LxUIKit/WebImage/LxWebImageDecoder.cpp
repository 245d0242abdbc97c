#include <LxUIKit/WebImage/LxWebImageDecoder_p.h>

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QThread>

#include <zlib.h>

#include <atomic>

namespace {

// libjpeg reports corrupt and missing data only as warnings, which Qt passes to qWarning. These
// are the ones that mean picture data was lost; the rest (colour profile, JFIF version, Adobe
// transform notices) leave the picture whole.
bool IsJpegDamageWarning(const QString& msg) {
    if (msg.startsWith(QLatin1String("Corrupt JPEG data")))
        return !msg.contains(QLatin1String("ICC"));
    return msg.startsWith(QLatin1String("Premature end of JPEG file")) ||
           msg.startsWith(QLatin1String("Invalid SOS parameters")) ||
           msg.startsWith(QLatin1String("Inconsistent progression sequence"));
}

// Counts the damage warnings the JPEG decoder writes while a decode runs on this thread; every
// message is still passed on to the handler installed before.
class CScopedDecodeWarnings {
public:
    CScopedDecodeWarnings() {
        s_pThread = QThread::currentThread();
        s_i32Count = 0;
        m_prev = qInstallMessageHandler(&CScopedDecodeWarnings::Handler);
        s_prev = m_prev;
    }
    ~CScopedDecodeWarnings() {
        qInstallMessageHandler(m_prev);
        s_pThread = nullptr;
    }
    int Count() const { return s_i32Count; }

private:
    static void Handler(QtMsgType type, const QMessageLogContext& ctx, const QString& msg) {
        if (type == QtWarningMsg && QThread::currentThread() == s_pThread.load() && IsJpegDamageWarning(msg))
            ++s_i32Count;
        if (s_prev)
            s_prev(type, ctx, msg);
    }
    QtMessageHandler m_prev = nullptr;
    static std::atomic<QThread*> s_pThread;
    static std::atomic<int> s_i32Count;
    static QtMessageHandler s_prev;
};

std::atomic<QThread*> CScopedDecodeWarnings::s_pThread{nullptr};
std::atomic<int> CScopedDecodeWarnings::s_i32Count{0};
QtMessageHandler CScopedDecodeWarnings::s_prev = nullptr;

bool SetWhy(QString* pWhy, const QString& why) {
    if (pWhy)
        *pWhy = why;
    return false;
}

bool IsVector(const QByteArray& format) { return format == "svg" || format == "svgz"; }

bool IsAccepted(const QByteArray& format) {
    return format == "png" || format == "jpeg" || format == "gif" || format == "webp" || format == "bmp";
}

quint32 Be32(const QByteArray& d, qint64 pos) {
    const auto* p = reinterpret_cast<const uchar*>(d.constData()) + pos;
    return (quint32(p[0]) << 24) | (quint32(p[1]) << 16) | (quint32(p[2]) << 8) | p[3];
}
quint32 Be16(const QByteArray& d, qint64 pos) {
    const auto* p = reinterpret_cast<const uchar*>(d.constData()) + pos;
    return (quint32(p[0]) << 8) | p[1];
}
quint32 Le32(const QByteArray& d, qint64 pos) {
    const auto* p = reinterpret_cast<const uchar*>(d.constData()) + pos;
    return (quint32(p[3]) << 24) | (quint32(p[2]) << 16) | (quint32(p[1]) << 8) | p[0];
}

// Inflates a zlib stream only far enough to know whether it stays within `limit` bytes; the
// first bytes produced go to `head` (up to i32HeadMax). Damaged data counts as bounded: the
// decoder stops where inflation fails as well.
bool InflatesWithin(const char* data, qint64 size, qint64 limit, QByteArray* head = nullptr, int i32HeadMax = 0) {
    z_stream zs{};
    if (inflateInit(&zs) != Z_OK)
        return false;
    zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data));
    zs.avail_in = uInt(size);
    char chunk[16 * 1024];
    qint64 produced = 0;
    for (;;) {
        zs.next_out = reinterpret_cast<Bytef*>(chunk);
        zs.avail_out = sizeof(chunk);
        const int rc = inflate(&zs, Z_NO_FLUSH);
        const qint64 n = qint64(sizeof(chunk) - zs.avail_out);
        if (head && head->size() < i32HeadMax)
            head->append(chunk, int(qMin<qint64>(n, i32HeadMax - head->size())));
        produced += n;
        if (produced > limit || rc != Z_OK || (n == 0 && zs.avail_in == 0))
            break;
    }
    inflateEnd(&zs);
    return produced <= limit;
}

// A compressed PNG metadata chunk (zTXt, iTXt, iCCP): its zlib data must inflate within the bound,
// and an ICC profile must not announce more than the bound either (libpng allocates that size).
bool PngCompressedChunkIsBounded(const QByteArray& d, qint64 pos, qint64 len, const QByteArray& type) {
    const char* p = d.constData() + pos;
    const qint64 keyEnd = QByteArray::fromRawData(p, int(len)).indexOf('\0');
    if (keyEnd < 0)
        return true;            // no compressed data to speak of: the decoder ignores the chunk
    qint64 start = keyEnd + 2;  // keyword, NUL, compression method
    if (type == "iTXt") {
        if (keyEnd + 3 > len)
            return true;
        if (p[keyEnd + 1] == 0)
            return true;  // uncompressed text: bounded by the chunk length
        // keyword, NUL, flag, method, language tag NUL, translated keyword NUL
        qint64 q = keyEnd + 3;
        for (int n = 0; n < 2; ++n) {
            while (q < len && p[q] != 0)
                ++q;
            ++q;
        }
        start = q;
    }
    if (start > len)
        return true;
    QByteArray head;
    if (!InflatesWithin(p + start, len - start, CLxWebImageDecoder::kMaxPngTextChunkBytes * 4, &head, 4))
        return false;
    // libpng allocates the size an ICC profile header announces before inflating the rest.
    return type != "iCCP" || head.size() < 4 || Be32(head, 0) <= quint32(CLxWebImageDecoder::kMaxPngTextChunkBytes * 4);
}

bool CheckPng(const QByteArray& d, QString* pWhy) {
    qint64 pos = 8;  // the signature
    const qint64 size = d.size();
    for (;;) {
        if (pos + 12 > size)
            return SetWhy(pWhy, QStringLiteral("png ends before IEND"));
        const quint32 len = Be32(d, pos);
        const QByteArray type = d.mid(int(pos + 4), 4);
        if (len > 0x7fffffffu || pos + 12 + qint64(len) > size)
            return SetWhy(pWhy, QStringLiteral("png chunk %1 longer than the file").arg(QString::fromLatin1(type)));
        const bool bText = type == "tEXt" || type == "zTXt" || type == "iTXt";
        if ((bText || type == "iCCP") && len > CLxWebImageDecoder::kMaxPngTextChunkBytes)
            return SetWhy(pWhy, QStringLiteral("png %1 chunk of %2 bytes").arg(QString::fromLatin1(type)).arg(len));
        if ((type == "zTXt" || type == "iTXt" || type == "iCCP") && !PngCompressedChunkIsBounded(d, pos + 8, len, type))
            return SetWhy(pWhy, QStringLiteral("png %1 chunk inflates too far").arg(QString::fromLatin1(type)));
        if (type == "IEND")
            return true;
        pos += 12 + qint64(len);
    }
}

bool CheckJpeg(const QByteArray& d, QString* pWhy) {
    const qint64 size = d.size();
    qint64 pos = 2;  // SOI
    bool bProgressive = false;
    qint64 i64Samples = -1;
    for (;;) {
        if (pos + 2 > size || quint8(d[int(pos)]) != 0xFF)
            return SetWhy(pWhy, QStringLiteral("jpeg segments damaged"));
        while (pos + 2 < size && quint8(d[int(pos + 1)]) == 0xFF)
            ++pos;  // fill bytes
        const int marker = quint8(d[int(pos + 1)]);
        pos += 2;
        if (marker == 0x01 || (marker >= 0xD0 && marker <= 0xD7))
            continue;  // no length
        if (marker == 0xD8 || marker == 0xD9 || marker == 0x00)
            return SetWhy(pWhy, QStringLiteral("jpeg segments damaged"));
        if (pos + 2 > size)
            return SetWhy(pWhy, QStringLiteral("jpeg truncated"));
        const qint64 len = Be16(d, pos);
        if (len < 2 || pos + len > size)
            return SetWhy(pWhy, QStringLiteral("jpeg segment longer than the file"));
        const bool bSof = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (bSof) {
            if (len < 8)
                return SetWhy(pWhy, QStringLiteral("jpeg frame header damaged"));
            bProgressive = marker == 0xC2 || marker == 0xC6 || marker == 0xCA || marker == 0xCE;
            i64Samples = qint64(Be16(d, pos + 3)) * Be16(d, pos + 5) * quint8(d[int(pos + 7)]);
        }
        if (marker == 0xDA) {  // scan data follows; damage in it shows as decoder warnings
            if (i64Samples < 0)
                return SetWhy(pWhy, QStringLiteral("jpeg scan without a frame header"));
            if (bProgressive && i64Samples * 2 > CLxWebImageDecoder::kMaxDecodeBytes)
                return SetWhy(pWhy, QStringLiteral("progressive jpeg needs too much memory"));
            return true;
        }
        pos += len;
    }
}

// The canvas a WebP announces, read from its first chunk (extended header, lossy or lossless frame
// header); an empty size when it cannot be read. Qt's WebP reader allocates the canvas while it
// answers size(), so the bound is checked here first.
QSize WebpCanvas(const QByteArray& d) {
    const QByteArray type = d.mid(12, 4);
    const qint64 size = d.size();
    auto u8 = [&](qint64 pos) { return quint32(quint8(d[int(pos)])); };
    if (type == "VP8X" && size >= 30)
        return QSize(int((u8(24) | (u8(25) << 8) | (u8(26) << 16)) + 1),
                     int((u8(27) | (u8(28) << 8) | (u8(29) << 16)) + 1));
    if (type == "VP8 " && size >= 30 && u8(23) == 0x9d && u8(24) == 0x01 && u8(25) == 0x2a)
        return QSize(int((u8(26) | (u8(27) << 8)) & 0x3fff), int((u8(28) | (u8(29) << 8)) & 0x3fff));
    if (type == "VP8L" && size >= 25 && u8(20) == 0x2f) {
        const quint32 bits = Le32(d, 21);
        return QSize(int((bits & 0x3fff) + 1), int(((bits >> 14) & 0x3fff) + 1));
    }
    return QSize();
}

bool CheckWebp(const QByteArray& d, qint64 maxPixels, QString* pWhy) {
    if (d.size() < 20)
        return SetWhy(pWhy, QStringLiteral("webp truncated"));
    const QSize canvas = WebpCanvas(d);
    if (canvas.isEmpty() || qint64(canvas.width()) * canvas.height() > maxPixels)
        return SetWhy(
            pWhy, QStringLiteral("webp canvas %1x%2 unknown or too large").arg(canvas.width()).arg(canvas.height()));
    const qint64 end = qint64(Le32(d, 4)) + 8;
    if (end > d.size())
        return SetWhy(pWhy, QStringLiteral("webp container longer than the file"));
    qint64 pos = 12;
    while (pos + 8 <= end) {
        const qint64 len = Le32(d, pos + 4);
        if (pos + 8 + len > end)
            return SetWhy(pWhy, QStringLiteral("webp chunk longer than its container"));
        pos += 8 + len + (len & 1);
    }
    return true;
}

// Skips data sub-blocks from `pos`; false when the data ends before the zero-length terminator.
bool SkipSubBlocks(const QByteArray& d, int& pos) {
    while (pos < d.size()) {
        const int n = quint8(d[pos]);
        ++pos;
        if (n == 0)
            return true;
        pos += n;
    }
    return false;
}

QByteArray FormatOf(QIODevice* device) {
    QImageReader reader(device);
    reader.setDecideFormatFromContent(true);
    return reader.format().toLower();
}

}  // namespace

QByteArray CLxWebImageDecoder::DetectFormat(const QString& filePath) {
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray();
    return FormatOf(&file);
}

QByteArray CLxWebImageDecoder::DetectFormat(const QByteArray& data) {
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    return FormatOf(&buffer);
}

bool CLxWebImageDecoder::ReadFile(const QString& filePath, QByteArray& data, QString* pWhy) {
    data.clear();
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return SetWhy(pWhy, QStringLiteral("cannot open the file"));
    if (file.size() > kMaxFileBytes)
        return SetWhy(pWhy, QStringLiteral("file over %1 bytes").arg(kMaxFileBytes));
    data = file.read(kMaxFileBytes + 1);
    if (data.size() > kMaxFileBytes) {
        data.clear();  // grew while being read, or not a regular file
        return SetWhy(pWhy, QStringLiteral("file over %1 bytes").arg(kMaxFileBytes));
    }
    return true;
}

bool CLxWebImageDecoder::CheckStructure(const QByteArray& data, const QByteArray& format, QString* pWhy,
                                        qint64 maxPixels) {
    if (format == "png")
        return CheckPng(data, pWhy);
    if (format == "jpeg")
        return CheckJpeg(data, pWhy);
    if (format == "webp")
        return CheckWebp(data, maxPixels, pWhy);
    if (format == "gif") {
        const QSize extent = GifExtent(data);
        if (!extent.isValid())
            return SetWhy(pWhy, QStringLiteral("truncated or damaged gif"));
        if (qint64(extent.width()) * extent.height() > maxPixels)
            return SetWhy(pWhy, QStringLiteral("gif of %1x%2 too large").arg(extent.width()).arg(extent.height()));
    }
    return true;
}

bool CLxWebImageDecoder::CheckBounds(const QByteArray& data, QByteArray* pFormat, QSize* pSize, QString* pWhy,
                                     qint64 maxPixels) {
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = FormatOf(&buffer);
    if (pFormat)
        *pFormat = format;
    if (format.isEmpty())
        return SetWhy(pWhy, QStringLiteral("unknown format"));
    if (IsVector(format))
        return SetWhy(pWhy, QStringLiteral("vector picture"));
    if (!IsAccepted(format))
        return SetWhy(pWhy, QStringLiteral("format %1 not accepted").arg(QString::fromLatin1(format)));
    if (!CheckStructure(data, format, pWhy, maxPixels))
        return false;
    buffer.seek(0);
    QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    if (pSize)
        *pSize = size;
    if (!size.isValid() || size.isEmpty() || qint64(size.width()) * size.height() > maxPixels)
        return SetWhy(pWhy, QStringLiteral("size %1x%2 unknown or too large").arg(size.width()).arg(size.height()));
    return true;
}

bool CLxWebImageDecoder::DecodeStill(const QString& filePath, QImage& out, QString* pWhy) {
    out = QImage();
    QByteArray data;
    return ReadFile(filePath, data, pWhy) && DecodeStill(data, out, pWhy);
}

bool CLxWebImageDecoder::DecodeStill(const QByteArray& data, QImage& out, QString* pWhy, qint64 maxPixels) {
    out = QImage();
    QByteArray format;
    if (!CheckBounds(data, &format, nullptr, pWhy, maxPixels))
        return false;
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, format);
    reader.setAutoTransform(true);
    QImage image;
    int i32Damage = 0;
    {
        CScopedDecodeWarnings warnings;
        if (!reader.read(&image) || image.isNull())
            return SetWhy(pWhy, reader.errorString());
        i32Damage = warnings.Count();
    }
    if (i32Damage > 0)
        return SetWhy(pWhy, QStringLiteral("damaged %1").arg(QString::fromLatin1(format)));
    out = image;
    return true;
}

bool CLxWebImageDecoder::CheckAnimated(const QString& filePath, QByteArray* pFormat, QString* pWhy, QByteArray* pData) {
    QByteArray data;
    if (!ReadFile(filePath, data, pWhy) || !CheckAnimated(data, pFormat, pWhy))
        return false;
    if (pData)
        *pData = data;
    return true;
}

bool CLxWebImageDecoder::CheckAnimated(const QByteArray& data, QByteArray* pFormat, QString* pWhy) {
    return CheckBounds(data, pFormat, nullptr, pWhy, kMaxAnimatedPixels);
}

bool CLxWebImageDecoder::IsGifComplete(const QByteArray& d) { return GifExtent(d).isValid(); }

QSize CLxWebImageDecoder::GifExtent(const QByteArray& d) {
    if (d.size() < 13 || !(d.startsWith("GIF87a") || d.startsWith("GIF89a")))
        return QSize();
    auto le16 = [&](int pos) { return int(quint8(d[pos]) | (quint8(d[pos + 1]) << 8)); };
    // Qt's reader answers size() from the first frame but allocates the logical screen (the frame
    // when the screen is empty): the extent counted is the union of the screen and every frame,
    // never less than what is allocated.
    int i32Width = le16(6), i32Height = le16(8);
    const int screenFlags = quint8(d[10]);
    int pos = 13;
    if (screenFlags & 0x80)
        pos += 3 * (1 << ((screenFlags & 7) + 1));
    while (pos < d.size()) {
        switch (quint8(d[pos])) {
        case 0x3B: return QSize(i32Width, i32Height);
        case 0x21:  // extension: introducer, label, sub-blocks
            pos += 2;
            if (!SkipSubBlocks(d, pos))
                return QSize();
            break;
        case 0x2C: {  // image: descriptor, optional local table, LZW code size, sub-blocks
            if (pos + 10 > d.size())
                return QSize();
            i32Width = qMax(i32Width, le16(pos + 1) + le16(pos + 5));
            i32Height = qMax(i32Height, le16(pos + 3) + le16(pos + 7));
            const int flags = quint8(d[pos + 9]);
            pos += 10;
            if (flags & 0x80)
                pos += 3 * (1 << ((flags & 7) + 1));
            pos += 1;
            if (!SkipSubBlocks(d, pos))
                return QSize();
            break;
        }
        default: return QSize();
        }
    }
    return QSize();
}
