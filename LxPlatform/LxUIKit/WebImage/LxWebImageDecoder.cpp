#include <LxUIKit/WebImage/LxWebImageDecoder.h>

#include <QFile>
#include <QImageReader>
#include <QThread>

#include <atomic>

namespace {

// Counts the warnings the JPEG decoder writes (libjpeg reports corrupt and missing data only as
// warnings) while a decode runs on this thread; everything is still passed on to the handler
// installed before.
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
        if (type == QtWarningMsg && QThread::currentThread() == s_pThread.load())
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

void SetWhy(QString* pWhy, const QString& why) {
    if (pWhy)
        *pWhy = why;
}

bool IsVector(const QByteArray& format) { return format == "svg" || format == "svgz"; }

bool WithinPixelBound(const QSize& size) {
    return size.isValid() && !size.isEmpty() && qint64(size.width()) * size.height() <= CLxWebImageDecoder::kMaxPixels;
}

bool ReadWhole(const QString& path, QByteArray& out) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return false;
    out = f.readAll();
    return true;
}

// Qt's GIF reader shows a truncated file as far as it goes; the kit refuses it instead.
bool GifIsComplete(const QString& filePath, QString* pWhy) {
    QByteArray data;
    if (ReadWhole(filePath, data) && CLxWebImageDecoder::IsGifComplete(data))
        return true;
    SetWhy(pWhy, QStringLiteral("truncated or damaged gif"));
    return false;
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

}  // namespace

QByteArray CLxWebImageDecoder::DetectFormat(const QString& filePath) {
    QImageReader reader(filePath);
    reader.setDecideFormatFromContent(true);
    return reader.format().toLower();
}

bool CLxWebImageDecoder::DecodeStill(const QString& filePath, QImage& out, QString* pWhy) {
    out = QImage();
    QImageReader reader(filePath);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QByteArray format = reader.format().toLower();
    if (format.isEmpty()) {
        SetWhy(pWhy, QStringLiteral("unknown format"));
        return false;
    }
    if (IsVector(format)) {
        SetWhy(pWhy, QStringLiteral("vector picture"));
        return false;
    }
    const QSize size = reader.size();
    if (!WithinPixelBound(size)) {
        SetWhy(pWhy, QStringLiteral("size %1x%2 unknown or too large").arg(size.width()).arg(size.height()));
        return false;
    }
    if (format == "gif" && !GifIsComplete(filePath, pWhy))
        return false;
    QImage image;
    int i32Warnings = 0;
    {
        CScopedDecodeWarnings warnings;
        if (!reader.read(&image) || image.isNull()) {
            SetWhy(pWhy, reader.errorString());
            return false;
        }
        i32Warnings = warnings.Count();
    }
    if (format == "jpeg" && i32Warnings > 0) {
        SetWhy(pWhy, QStringLiteral("damaged jpeg"));
        return false;
    }
    out = image;
    return true;
}

bool CLxWebImageDecoder::CheckAnimated(const QString& filePath, QByteArray* pFormat, QString* pWhy) {
    QImageReader reader(filePath);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format().toLower();
    if (pFormat)
        *pFormat = format;
    if (format.isEmpty() || IsVector(format)) {
        SetWhy(pWhy, QStringLiteral("not an animated raster format"));
        return false;
    }
    if (!WithinPixelBound(reader.size())) {
        SetWhy(pWhy, QStringLiteral("size unknown or too large"));
        return false;
    }
    if (format == "gif" && !GifIsComplete(filePath, pWhy))
        return false;
    return true;
}

bool CLxWebImageDecoder::IsGifComplete(const QByteArray& d) {
    if (d.size() < 13 || !(d.startsWith("GIF87a") || d.startsWith("GIF89a")))
        return false;
    const int screenFlags = quint8(d[10]);
    int pos = 13;
    if (screenFlags & 0x80)
        pos += 3 * (1 << ((screenFlags & 7) + 1));
    while (pos < d.size()) {
        switch (quint8(d[pos])) {
        case 0x3B: return true;
        case 0x21:  // extension: introducer, label, sub-blocks
            pos += 2;
            if (!SkipSubBlocks(d, pos))
                return false;
            break;
        case 0x2C: {  // image: descriptor, optional local table, LZW code size, sub-blocks
            if (pos + 10 > d.size())
                return false;
            const int flags = quint8(d[pos + 9]);
            pos += 10;
            if (flags & 0x80)
                pos += 3 * (1 << ((flags & 7) + 1));
            pos += 1;
            if (!SkipSubBlocks(d, pos))
                return false;
            break;
        }
        default: return false;
        }
    }
    return false;
}
