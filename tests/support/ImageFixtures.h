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
