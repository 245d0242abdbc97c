#pragma once
// Image fixtures: static pictures drawn through QImage::save, animated GIF and WebP files made by
// scripts/make-sample-images.sh with ImageMagick and img2webp (Qt writes neither), JPEG variants
// and lying PNG and ICC structures built here, and damaged copies.

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QList>
#include <QString>

class QWidget;

namespace lxtest {

// A w x h picture: `color` with a contrasting diagonal band, so crops and scales are visible.
QImage MakeTestImage(int w, int h, const QColor& color);

// Writes `image` in `format` ("PNG", "JPEG", "WEBP"); returns the path, empty on failure.
QString SaveImage(const QString& path, const QImage& image, const char* format);

// Copies a committed fixture made by scripts/make-sample-images.sh (tests/support/fixtures/<name>)
// to `path`, creating folders; returns the absolute path, empty when it cannot. The animations
// there, frames<count>_<w>x<h>_<delay>ms.gif and .webp, loop forever through solid frames of red,
// green, blue, yellow, cyan and magenta, in that order.
QString CopyFixture(const QString& name, const QString& path);

// JPEG written with libjpeg, for the variants Qt's writer does not make.
struct JpegOptions {
    bool bCmyk = false;          // four components, Adobe-inverted as Photoshop writes them
    bool bProgressive = false;   // progressive scans
    int i32ExifOrientation = 0;  // 1..8 writes an EXIF orientation tag
    QByteArray icc;              // written as APP2 ICC_PROFILE segments
};
QByteArray MakeJpeg(const QImage& image, const JpegOptions& options);
// An RGB matrix/TRC ICC profile (sRGB, Qt's own).
QByteArray IccMatrixProfile();

// A 1x1 PNG with `tail` chunks appended after IDAT (before IEND); each is length, type, data and
// a CRC. The declared length may lie (`declared` >= 0 replaces it).
QByteArray PngChunk(const QByteArray& type, const QByteArray& data, qint64 declared = -1);
QByteArray TinyPng(const QByteArray& tail = QByteArray(), const QByteArray& beforeIdat = QByteArray());

// A zlib stream that inflates to `inflatedBytes` zero bytes (made in small pieces: the fixture
// itself stays cheap).
QByteArray ZlibBomb(qint64 inflatedBytes);

// A w x h black PNG (1-bit grey): a huge canvas in a small file, made without holding its pixels.
QByteArray BlankPng(int w, int h);

// Damage: keep the first `keep` bytes (negative: drop that many from the end); overwrite
// `count` bytes from the middle on with a pattern.
QByteArray Truncated(const QByteArray& data, int keep);
QByteArray Corrupted(const QByteArray& data, int count);
QByteArray ReadAll(const QString& path);

// `widget` rendered with its children over `background`, in device pixels.
QImage Render(QWidget* widget, const QColor& background);
// Each channel within `tolerance`.
bool Near(const QColor& a, const QColor& b, int tolerance);

}  // namespace lxtest
