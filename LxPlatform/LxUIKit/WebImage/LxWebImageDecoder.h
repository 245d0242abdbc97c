#pragma once
// CLxWebImageDecoder: the checks every downloaded raster picture passes before it is shown.
//
// Pictures come from the network, so nothing is trusted:
// - the format is found from the content (a file whose name lies is read as what it is);
// - the picture's size is read from its header first: more than kMaxPixels pixels (a small file
//   can announce a huge canvas) is refused before any memory is allocated for it;
// - damage the format lets us notice is refused instead of shown half-decoded: a GIF whose block
//   structure does not reach its trailer, a PNG or WebP the decoder rejects, a JPEG whose decoder
//   reports corrupt or missing data (a truncated JPEG otherwise decodes as a grey-bottomed picture);
// - SVG never goes through the raster path (see CLxSvgDocumentGuard).
// Damage that a format cannot notice (wrong bytes inside intact JPEG or WebP data) shows as decoded.

#include <QByteArray>
#include <QImage>
#include <QString>

class CLxWebImageDecoder {
public:
    static constexpr qint64 kMaxPixels = 64LL * 1024 * 1024;  // 256 MiB as 32-bit pixels

    // Lower-case format read from the content ("png", "jpeg", "gif", "webp", "svg" ...); empty when
    // no image plug-in recognises it or the file cannot be opened.
    static QByteArray DetectFormat(const QString& filePath);

    // Decodes the first picture of a raster file (EXIF orientation applied).
    static bool DecodeStill(const QString& filePath, QImage& out, QString* pWhy = nullptr);

    // Checks an animated file before a QMovie plays it: readable, within kMaxPixels, complete.
    // `pFormat` receives the content format.
    static bool CheckAnimated(const QString& filePath, QByteArray* pFormat = nullptr, QString* pWhy = nullptr);

    // True when the GIF's blocks are well formed up to the trailer byte.
    static bool IsGifComplete(const QByteArray& data);
};
