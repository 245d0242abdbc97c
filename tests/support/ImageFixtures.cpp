#include "ImageFixtures.h"

#include "LxTestSupport.h"

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

void PutLE32(QByteArray& out, quint32 v) {
    PutLE16(out, int(v & 0xffff));
    PutLE16(out, int(v >> 16));
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

QString CopyFixture(const QString& name, const QString& path) {
    const QString source = QStringLiteral(LX_TEST_FIXTURE_DIR "/") + name;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile::remove(path);
    if (!QFile::copy(source, path)) {
        qWarning("fixture %s cannot be copied to %s", qPrintable(source), qPrintable(path));
        return QString();
    }
    return QFileInfo(path).absoluteFilePath();
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
