#include "ImageFixtures.h"

#include "LxTestSupport.h"

#include <QBuffer>
#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QWidget>

#include <jpeglib.h>
#include <zlib.h>
#include <cstdio>

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

namespace {

void PutBE32(QByteArray& out, quint32 v) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out.append(char((v >> shift) & 0xff));
}
void PutBE16(QByteArray& out, int v) {
    out.append(char((v >> 8) & 0xff));
    out.append(char(v & 0xff));
}

// EXIF APP1 body: little-endian TIFF header, one IFD with the orientation tag.
QByteArray ExifOrientation(int orientation) {
    QByteArray out("Exif\0\0", 6);
    out.append("II*\0", 4);
    PutLE32(out, 8);
    PutLE16(out, 1);       // one entry
    PutLE16(out, 0x0112);  // Orientation
    PutLE16(out, 3);       // SHORT
    PutLE32(out, 1);       // count
    PutLE16(out, orientation);
    PutLE16(out, 0);
    PutLE32(out, 0);  // no next IFD
    return out;
}

}  // namespace

QByteArray MakeJpeg(const QImage& source, const JpegOptions& options) {
    const QImage image = source.convertToFormat(QImage::Format_RGB888);
    jpeg_compress_struct cinfo{};
    jpeg_error_mgr jerr{};
    cinfo.err = jpeg_std_error(&jerr);
    jpeg_create_compress(&cinfo);
    unsigned char* pOut = nullptr;
    unsigned long outSize = 0;
    jpeg_mem_dest(&cinfo, &pOut, &outSize);
    cinfo.image_width = JDIMENSION(image.width());
    cinfo.image_height = JDIMENSION(image.height());
    cinfo.input_components = options.bCmyk ? 4 : 3;
    cinfo.in_color_space = options.bCmyk ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&cinfo);
    jpeg_set_quality(&cinfo, 90, TRUE);
    if (options.bProgressive)
        jpeg_simple_progression(&cinfo);
    jpeg_start_compress(&cinfo, TRUE);
    if (options.i32ExifOrientation > 0) {
        const QByteArray exif = ExifOrientation(options.i32ExifOrientation);
        jpeg_write_marker(&cinfo, JPEG_APP0 + 1, reinterpret_cast<const JOCTET*>(exif.constData()),
                          unsigned(exif.size()));
    }
    if (!options.icc.isEmpty())
        jpeg_write_icc_profile(&cinfo, reinterpret_cast<const JOCTET*>(options.icc.constData()),
                               unsigned(options.icc.size()));
    std::vector<JSAMPLE> row(size_t(image.width()) * size_t(cinfo.input_components));
    while (cinfo.next_scanline < cinfo.image_height) {
        const uchar* src = image.constScanLine(int(cinfo.next_scanline));
        for (int x = 0; x < image.width(); ++x) {
            const uchar r = src[3 * x], g = src[3 * x + 1], b = src[3 * x + 2];
            if (options.bCmyk) {
                // Naive CMY with black extracted, stored inverted (Adobe).
                const int k = 255 - qMax(r, qMax(g, b));
                const int d = 255 - k;
                const int c = d ? (255 * (d - r)) / d : 0, m = d ? (255 * (d - g)) / d : 0,
                          y = d ? (255 * (d - b)) / d : 0;
                JSAMPLE* px = &row[size_t(4 * x)];
                px[0] = JSAMPLE(255 - c);
                px[1] = JSAMPLE(255 - m);
                px[2] = JSAMPLE(255 - y);
                px[3] = JSAMPLE(255 - k);
            } else {
                JSAMPLE* px = &row[size_t(3 * x)];
                px[0] = r;
                px[1] = g;
                px[2] = b;
            }
        }
        JSAMPROW rows[1] = {row.data()};
        jpeg_write_scanlines(&cinfo, rows, 1);
    }
    jpeg_finish_compress(&cinfo);
    jpeg_destroy_compress(&cinfo);
    const QByteArray out(reinterpret_cast<const char*>(pOut), int(outSize));
    free(pOut);
    return out;
}

QByteArray IccMatrixProfile() { return QColorSpace(QColorSpace::SRgb).iccProfile(); }

QByteArray IccLutProfile() {
    // Tag data first, then the header and tag table that point at it.
    auto xyz = [](double x, double y, double z) {
        QByteArray t("XYZ \0\0\0\0", 8);
        for (double v : {x, y, z})
            PutBE32(t, quint32(qint32(v * 65536.0)));
        return t;
    };
    QByteArray desc("desc\0\0\0\0", 8);
    PutBE32(desc, 4);
    desc.append("lut\0", 4);
    desc.append(QByteArray(12 + 67, '\0'));  // no Unicode or ScriptCode description
    // mft2: 3 inputs, 3 outputs, a 2-point grid, identity matrix, two-entry tables.
    QByteArray lut("mft2\0\0\0\0", 8);
    lut.append(char(3));
    lut.append(char(3));
    lut.append(char(2));
    lut.append(char(0));
    for (int i = 0; i < 9; ++i)
        PutBE32(lut, (i % 4 == 0) ? 0x10000u : 0u);
    PutBE16(lut, 2);
    PutBE16(lut, 2);
    for (int i = 0; i < 3; ++i) {
        PutBE16(lut, 0);
        PutBE16(lut, 0xffff);
    }
    for (int i = 0; i < 8; ++i)
        for (int c = 0; c < 3; ++c)
            PutBE16(lut, ((i >> (2 - c)) & 1) ? 0xffff : 0);
    for (int i = 0; i < 3; ++i) {
        PutBE16(lut, 0);
        PutBE16(lut, 0xffff);
    }
    const QByteArray wtpt = xyz(0.9642, 1.0, 0.8249);
    const QList<QPair<QByteArray, QByteArray>> tags{{"desc", desc}, {"wtpt", wtpt}, {"A2B0", lut}, {"B2A0", lut}};
    const int tableSize = 4 + 12 * tags.size();
    QByteArray body;
    QByteArray table;
    PutBE32(table, quint32(tags.size()));
    for (const auto& tag : tags) {
        while (body.size() % 4)
            body.append('\0');
        table.append(tag.first);
        PutBE32(table, quint32(128 + tableSize + body.size()));
        PutBE32(table, quint32(tag.second.size()));
        body.append(tag.second);
    }
    QByteArray header;
    PutBE32(header, quint32(128 + tableSize + body.size()));
    header.append("lcms");
    PutBE32(header, 0x02100000);  // version 2.1
    header.append("mntrRGB XYZ ");
    header.append(QByteArray(12, '\0'));  // date
    header.append("acsp");
    header.append(QByteArray(24, '\0'));  // platform, flags, manufacturer, model, attributes
    PutBE32(header, 0);                   // rendering intent
    const QByteArray d50 = xyz(0.9642, 1.0, 0.8249).mid(8);
    header.append(d50);
    header.append(QByteArray(128 - header.size(), '\0'));
    return header + table + body;
}

QByteArray ZlibBomb(qint64 inflatedBytes) {
    z_stream zs{};
    deflateInit(&zs, 9);
    const QByteArray zeros(64 * 1024, '\0');
    QByteArray out;
    char chunk[16 * 1024];
    for (qint64 done = 0; done < inflatedBytes;) {
        const int n = int(qMin<qint64>(zeros.size(), inflatedBytes - done));
        done += n;
        zs.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.constData()));
        zs.avail_in = uInt(n);
        const int flush = done < inflatedBytes ? Z_NO_FLUSH : Z_FINISH;
        do {
            zs.next_out = reinterpret_cast<Bytef*>(chunk);
            zs.avail_out = sizeof(chunk);
            deflate(&zs, flush);
            out.append(chunk, int(sizeof(chunk) - zs.avail_out));
        } while (zs.avail_out == 0);
    }
    deflateEnd(&zs);
    return out;
}

QByteArray PngChunk(const QByteArray& type, const QByteArray& data, qint64 declared) {
    QByteArray out;
    PutBE32(out, quint32(declared >= 0 ? declared : data.size()));
    const QByteArray typed = type + data;
    out.append(typed);
    PutBE32(out, quint32(crc32(0, reinterpret_cast<const Bytef*>(typed.constData()), uInt(typed.size()))));
    return out;
}

QByteArray BlankPng(int w, int h) {
    QByteArray ihdr;
    PutBE32(ihdr, quint32(w));
    PutBE32(ihdr, quint32(h));
    ihdr.append("\x01\x00\x00\x00\x00", 5);           // 1-bit grey, no interlace
    const qint64 rowBytes = 1 + (qint64(w) + 7) / 8;  // filter byte and pixels, all zero
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + PngChunk("IHDR", ihdr) + PngChunk("IDAT", ZlibBomb(rowBytes * h)) +
           PngChunk("IEND", QByteArray());
}

QByteArray TinyPng(const QByteArray& tail, const QByteArray& beforeIdat) {
    QByteArray ihdr;
    PutBE32(ihdr, 1);
    PutBE32(ihdr, 1);
    ihdr.append("\x08\x06\x00\x00\x00", 5);                // 8-bit RGBA, no interlace
    const QByteArray scanline("\x00\xff\x00\x00\xff", 5);  // filter 0, one red pixel
    const QByteArray idat = qCompress(scanline).mid(4);    // zlib stream without Qt's size prefix
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + PngChunk("IHDR", ihdr) + beforeIdat + PngChunk("IDAT", idat) + tail +
           PngChunk("IEND", QByteArray());
}

}  // namespace lxtest
