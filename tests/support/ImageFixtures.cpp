#include "ImageFixtures.h"

#include "LxTestSupport.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QWidget>

#include <vector>

namespace lxtest {
namespace {

void PutLE16(QByteArray& out, int v) {
    out.append(char(v & 0xff));
    out.append(char((v >> 8) & 0xff));
}

void PutLE24(QByteArray& out, int v) {
    PutLE16(out, v & 0xffff);
    out.append(char((v >> 16) & 0xff));
}

void PutLE32(QByteArray& out, quint32 v) {
    PutLE16(out, int(v & 0xffff));
    PutLE16(out, int(v >> 16));
}

int CubeLevel(int c) { return (c * 5 + 127) / 255; }

// LZW stream with literal codes only: a clear code every 250 pixels keeps the code width at 9
// bits, which every decoder accepts.
QByteArray LzwLiteral(const std::vector<quint8>& indices) {
    QByteArray out;
    quint32 acc = 0;
    int bits = 0;
    auto put = [&](int code) {
        acc |= quint32(code) << bits;
        bits += 9;
        while (bits >= 8) {
            out.append(char(acc & 0xff));
            acc >>= 8;
            bits -= 8;
        }
    };
    const int kClear = 256, kEnd = 257;
    for (size_t i = 0; i < indices.size(); ++i) {
        if (i % 250 == 0)
            put(kClear);
        put(indices[i]);
    }
    put(kEnd);
    if (bits > 0)
        out.append(char(acc & 0xff));
    return out;
}

QByteArray Chunk(const QByteArray& fourcc, const QByteArray& payload) {
    QByteArray out = fourcc;
    PutLE32(out, quint32(payload.size()));
    out += payload;
    if (payload.size() % 2)
        out.append('\0');
    return out;
}

QByteArray EncodeAnimatedWebp(const QList<QImage>& frames, int delayMs) {
    if (frames.isEmpty())
        return {};
    const int w = frames.first().width(), h = frames.first().height();
    QByteArray anmf;
    for (const QImage& frame : frames) {
        QByteArray single;
        QBuffer buf(&single);
        buf.open(QIODevice::WriteOnly);
        if (!frame.scaled(w, h).convertToFormat(QImage::Format_RGB32).save(&buf, "WEBP", 100))
            return {};
        // Keep the frame's ALPH / VP8 / VP8L chunks; drop the RIFF header and VP8X.
        QByteArray data;
        for (int pos = 12; pos + 8 <= single.size();) {
            const QByteArray fourcc = single.mid(pos, 4);
            const quint32 size = quint8(single[pos + 4]) | quint8(single[pos + 5]) << 8 |
                                 quint8(single[pos + 6]) << 16 | quint32(quint8(single[pos + 7])) << 24;
            if (fourcc == "ALPH" || fourcc == "VP8 " || fourcc == "VP8L")
                data += Chunk(fourcc, single.mid(pos + 8, int(size)));
            pos += 8 + int(size) + int(size % 2);
        }
        QByteArray payload;
        PutLE24(payload, 0);
        PutLE24(payload, 0);
        PutLE24(payload, w - 1);
        PutLE24(payload, h - 1);
        PutLE24(payload, delayMs);
        payload.append(char(0x02));  // no blending, no disposal
        payload += data;
        anmf += Chunk("ANMF", payload);
    }
    QByteArray vp8x;
    vp8x.append(char(0x02));  // animation
    vp8x.append(3, '\0');
    PutLE24(vp8x, w - 1);
    PutLE24(vp8x, h - 1);
    QByteArray anim;
    PutLE32(anim, 0xffffffffu);  // background
    PutLE16(anim, 0);            // loop forever
    const QByteArray body = QByteArray("WEBP") + Chunk("VP8X", vp8x) + Chunk("ANIM", anim) + anmf;
    QByteArray out("RIFF");
    PutLE32(out, quint32(body.size()));
    return out + body;
}

QByteArray EncodeGif(const QList<QImage>& frames, int delayMs) {
    if (frames.isEmpty())
        return {};
    const int w = frames.first().width(), h = frames.first().height();
    QByteArray out("GIF89a");
    PutLE16(out, w);
    PutLE16(out, h);
    out.append(char(0xF7));  // global table of 256 entries
    out.append('\0');
    out.append('\0');
    for (int i = 0; i < 256; ++i) {
        const int r = i < 216 ? (i / 36) * 51 : 0, g = i < 216 ? ((i / 6) % 6) * 51 : 0, b = i < 216 ? (i % 6) * 51 : 0;
        out.append(char(r));
        out.append(char(g));
        out.append(char(b));
    }
    out.append("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00", 19);
    for (const QImage& frame0 : frames) {
        const QImage frame = frame0.convertToFormat(QImage::Format_ARGB32).scaled(w, h);
        out.append("\x21\xF9\x04", 3);
        out.append('\0');
        PutLE16(out, qMax(1, delayMs / 10));
        out.append('\0');
        out.append('\0');
        out.append(char(0x2C));
        PutLE16(out, 0);
        PutLE16(out, 0);
        PutLE16(out, w);
        PutLE16(out, h);
        out.append('\0');
        std::vector<quint8> indices;
        indices.reserve(size_t(w) * size_t(h));
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
                const QRgb px = frame.pixel(x, y);
                indices.push_back(quint8(CubeLevel(qRed(px)) * 36 + CubeLevel(qGreen(px)) * 6 + CubeLevel(qBlue(px))));
            }
        out.append(char(8));
        const QByteArray lzw = LzwLiteral(indices);
        for (int pos = 0; pos < lzw.size(); pos += 255) {
            const int n = qMin(255, lzw.size() - pos);
            out.append(char(n));
            out.append(lzw.mid(pos, n));
        }
        out.append('\0');
    }
    out.append(char(0x3B));
    return out;
}

}  // namespace

QImage MakeTestImage(int w, int h, const QColor& color) {
    QImage img(w, h, QImage::Format_ARGB32);
    img.fill(color);
    QPainter p(&img);
    p.setPen(QPen(QColor(255 - color.red(), 255 - color.green(), 255 - color.blue()), qMax(1, w / 8)));
    p.drawLine(0, 0, w, h);
    return img;
}

QString SaveImage(const QString& path, const QImage& image, const char* format) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    return image.save(path, format) ? QFileInfo(path).absoluteFilePath() : QString();
}

QString SaveGif(const QString& path, const QList<QImage>& frames, int delayMs) {
    return WriteFile(path, EncodeGif(frames, delayMs));
}

QString SaveAnimatedWebp(const QString& path, const QList<QImage>& frames, int delayMs) {
    return WriteFile(path, EncodeAnimatedWebp(frames, delayMs));
}

QList<QImage> MakeFrames(int count, int w, int h) {
    static const QColor colors[] = {QColor(255, 0, 0),   QColor(0, 255, 0),   QColor(0, 0, 255),
                                    QColor(255, 255, 0), QColor(0, 255, 255), QColor(255, 0, 255)};
    QList<QImage> frames;
    for (int i = 0; i < count; ++i) {
        QImage img(w, h, QImage::Format_ARGB32);
        img.fill(colors[i % 6]);
        frames << img;
    }
    return frames;
}

QByteArray Truncated(const QByteArray& data, int keep) {
    return keep >= 0 ? data.left(keep) : data.left(qMax(0, data.size() + keep));
}

QByteArray Corrupted(const QByteArray& data, int count) {
    QByteArray out = data;
    const int from = out.size() / 2;
    for (int i = 0; i < count && from + i < out.size(); ++i)
        out[from + i] = char(0xA5 ^ (i * 37));
    return out;
}

QByteArray ReadAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QImage Render(QWidget* widget, const QColor& background) {
    const qreal dpr = widget->devicePixelRatioF();
    QImage img(widget->size() * dpr, QImage::Format_ARGB32_Premultiplied);
    img.setDevicePixelRatio(dpr);
    img.fill(background);
    widget->render(&img, QPoint(), QRegion(), QWidget::DrawChildren);
    return img;
}

bool Near(const QColor& a, const QColor& b, int tolerance) {
    return qAbs(a.red() - b.red()) <= tolerance && qAbs(a.green() - b.green()) <= tolerance &&
           qAbs(a.blue() - b.blue()) <= tolerance;
}

}  // namespace lxtest
