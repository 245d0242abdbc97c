#pragma once
// CLxWebImageDecoder: the checks every downloaded raster picture passes before it is shown.
//
// Pictures come from the network, so nothing is trusted:
// - the file is read whole (at most kMaxFileBytes) and decoded from memory, so what was checked is
//   what is decoded;
// - the format is found from the content (a file whose name lies is read as what it is); only
//   PNG, JPEG, GIF, WebP and BMP are decoded, the formats web pictures come in (the other image
//   plug-ins are not exposed to the network);
// - the structure is walked before any decoder sees the bytes, so decoding is bounded by the file:
//   a PNG chunk longer than what is left of the file, a PNG text or profile chunk (tEXt, zTXt,
//   iTXt, iCCP) over kMaxPngTextChunkBytes, or compressed data in one inflating (or a profile
//   announcing) more than four times that, a PNG without its IEND, a JPEG segment running past
//   the end, a WebP chunk longer than its RIFF container or a WebP canvas over the pixel bound, a
//   GIF whose blocks do not reach the trailer or whose screen and frames together cover more
//   than the pixel bound: all are refused (libpng would otherwise allocate what a chunk header
//   announces, 1 GiB for a file of a hundred bytes; Qt's WebP reader allocates the canvas to
//   answer size(), and its GIF reader answers size() with the first frame but allocates the
//   whole screen);
// - the picture's size is read from its header: more than kMaxPixels pixels (a small file can
//   announce a huge canvas) is refused before any memory is allocated for it; the decoded frame
//   is then at most kMaxDecodeBytes, and a progressive JPEG, whose decoder holds every
//   coefficient of the picture (2 bytes per sample), must fit in kMaxDecodeBytes as well;
// - damage is refused instead of shown half-decoded: a read the decoder fails, and for JPEG the
//   libjpeg warnings that mean lost picture data, namely "Corrupt JPEG data: ..." (except a bad
//   ICC marker), "Premature end of JPEG file", "Invalid SOS parameters for sequential JPEG" and
//   "Inconsistent progression sequence ..." (a truncated JPEG otherwise decodes with a grey
//   bottom). Warnings about the colour profile (Qt's ICC parser cannot use LUT-based profiles and
//   says so; a damaged ICC marker) and any other notice leave the picture whole, so they do not
//   refuse it: the picture is shown without colour management;
// - SVG never goes through the raster path (see CLxSvgDocumentGuard).
// Damage that a format cannot notice (wrong bytes inside intact JPEG or WebP data) shows as
// decoded. 64 Mpx is the pixel bound because the largest camera pictures shared in feeds are
// below it, and 256 MiB of pixels is the most one picture may cost.

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

class CLxWebImageDecoder {
public:
    static constexpr qint64 kMaxPixels = 64LL * 1024 * 1024;
    static constexpr qint64 kMaxDecodeBytes = kMaxPixels * 4;  // one 32-bit frame: 256 MiB
    static constexpr qint64 kMaxFileBytes = 64LL * 1024 * 1024;
    static constexpr qint64 kMaxPngTextChunkBytes = 256LL * 1024;
    // Animated pictures compose every frame on a canvas of their full size, again and again while
    // they play: their canvas is held to 8 Mi pixels (32 MiB a frame).
    static constexpr qint64 kMaxAnimatedPixels = 8LL * 1024 * 1024;

    // Lower-case format read from the content ("png", "jpeg", "gif", "webp", "svg" ...); empty when
    // no image plug-in recognises it or the file cannot be opened. Reads the header only.
    static QByteArray DetectFormat(const QString& filePath);
    static QByteArray DetectFormat(const QByteArray& data);

    // Reads a picture file whole; false when missing, unreadable or over kMaxFileBytes.
    static bool ReadFile(const QString& filePath, QByteArray& data, QString* pWhy = nullptr);

    // Walks the container of `format` (see above); true when decoding it is bounded by the bytes.
    // Formats without a walk of their own answer true. A WebP's canvas is checked against
    // `maxPixels` here, before Qt's reader (which allocates it to answer size()) sees it.
    static bool CheckStructure(const QByteArray& data, const QByteArray& format, QString* pWhy = nullptr,
                               qint64 maxPixels = kMaxPixels);

    // Decodes the first picture of a raster file (EXIF orientation applied), after every check.
    // `maxPixels` lowers the pixel bound (pictures embedded in other documents).
    static bool DecodeStill(const QString& filePath, QImage& out, QString* pWhy = nullptr);
    static bool DecodeStill(const QByteArray& data, QImage& out, QString* pWhy = nullptr,
                            qint64 maxPixels = kMaxPixels);

    // Checks picture bytes without decoding them: accepted format, structure, pixel bound.
    // `pFormat` and `pSize` receive what the header says.
    static bool CheckBounds(const QByteArray& data, QByteArray* pFormat = nullptr, QSize* pSize = nullptr,
                            QString* pWhy = nullptr, qint64 maxPixels = kMaxPixels);

    // Checks an animated file before a QMovie plays it: readable, within kMaxAnimatedPixels,
    // complete. `pFormat` receives the content format, `pData` (optional) the bytes to play from.
    static bool CheckAnimated(const QString& filePath, QByteArray* pFormat = nullptr, QString* pWhy = nullptr,
                              QByteArray* pData = nullptr);
    static bool CheckAnimated(const QByteArray& data, QByteArray* pFormat = nullptr, QString* pWhy = nullptr);

    // True when the GIF's blocks are well formed up to the trailer byte.
    static bool IsGifComplete(const QByteArray& data);
    // The canvas a GIF is painted on: its logical screen grown to hold every frame (Qt's reader
    // answers size() with the first frame's); invalid when the blocks are not well formed.
    static QSize GifExtent(const QByteArray& data);
};
