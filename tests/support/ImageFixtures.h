#pragma once
// Image fixtures drawn by the tests themselves: static pictures through QImage::save, animated GIF
// and animated WebP through small writers of our own (Qt writes neither), and damaged copies.

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

// Animated GIF (looping, `delayMs` per frame); colours are snapped to a 6x6x6 cube.
QString SaveGif(const QString& path, const QList<QImage>& frames, int delayMs = 100);

// Animated WebP: each frame encoded by Qt's WebP writer, then muxed into ANMF chunks.
QString SaveAnimatedWebp(const QString& path, const QList<QImage>& frames, int delayMs = 100);

// Frames of distinct solid colours (red, green, blue, ...).
QList<QImage> MakeFrames(int count, int w, int h);

// JPEG written with libjpeg, for the variants Qt's writer does not make.
struct JpegOptions {
    bool bCmyk = false;          // four components, Adobe-inverted as Photoshop writes them
    bool bProgressive = false;   // progressive scans
    int i32ExifOrientation = 0;  // 1..8 writes an EXIF orientation tag
    QByteArray icc;              // written as APP2 ICC_PROFILE segments
};
QByteArray MakeJpeg(const QImage& image, const JpegOptions& options);
// ICC profiles: an RGB matrix/TRC profile (sRGB, Qt's own) and an RGB profile whose only colour
// transform is a LUT (A2B0/B2A0 of type mft2), which Qt's colour management does not use.
QByteArray IccMatrixProfile();
QByteArray IccLutProfile();

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
