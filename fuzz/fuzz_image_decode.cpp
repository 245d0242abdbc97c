// Untrusted picture bytes through the kit's decoder: content sniffing, the structure walks, the
// pixel bound, the still decode and the frames an animated picture would play. Whatever is
// accepted must stay within the decoder's bounds.

#include "FuzzApp.h"

#include <LxUIKit/WebImage/LxWebImageDecoder_p.h>

#include <QBuffer>
#include <QMovie>

#include <cstdint>
#include <cstdlib>

namespace {

constexpr qint64 kFuzzPixels = 1024 * 1024;

// What the header announced is what was decoded: never more pixels.
bool WithinBound(const QSize& size) { return qint64(size.width()) * size.height() <= kFuzzPixels; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    lx_fuzz::App();
    if (size > size_t(CLxWebImageDecoder::kMaxFileBytes))
        return 0;
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data), int(size));
    // Decoding a picture within the bound costs in proportion to its pixels, by design; a smaller
    // bound here keeps each run short, so that what times out is cost the bound does not cover.
    QImage image;
    if (CLxWebImageDecoder::DecodeStill(bytes, image, nullptr, kFuzzPixels) &&
        (image.isNull() || !WithinBound(image.size())))
        abort();  // accepted, yet empty or over the bound

    // The animated path: a QMovie plays the checked bytes (as the animated widget does); a few
    // frames are enough to reach every frame decoder.
    QByteArray format;
    if (!CLxWebImageDecoder::CheckAnimated(bytes, &format) || (format != "gif" && format != "webp") ||
        !CLxWebImageDecoder::CheckBounds(bytes, nullptr, nullptr, nullptr, kFuzzPixels))
        return 0;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QMovie movie(&buffer, format);
    for (int i = 0; i < 8 && movie.jumpToNextFrame(); ++i) {
        if (!WithinBound(movie.currentImage().size()))
            abort();
    }
    return 0;
}
