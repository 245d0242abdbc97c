// The raster decoder: hostile files are refused at a bounded cost (each row states its ceiling),
// damage is refused, and whole pictures with colour profiles, CMYK, progressive scans or an EXIF
// rotation are shown.

#include "ImageFixtures.h"
#include "LxTestSupport.h"

#include <LxUIKit/WebImage/LxWebAnimatedImageWidget_p.h>
#include <LxUIKit/WebImage/LxWebImageDecoder_p.h>
#include <LxUIKit/WebImage/LxWebImageWidget.h>

#include <QBuffer>
#include <QColorSpace>
#include <QPainter>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Decoder = CLxWebImageDecoder;

// Peak memory and CPU allowed for refusing one hostile file (the unguarded decoders took up to
// 1.1 GB and 4 s on these).
constexpr double kHostileCeilingMiB = 48 * lxtest::CostMeter::kSanitizerFactor;
constexpr double kHostileCeilingCpuSeconds = 1.0 * lxtest::CostMeter::kSanitizerFactor;

// Left half red, right half blue: a rotation shows where the halves go.
QImage Halves(int w, int h) {
    QImage image(w, h, QImage::Format_RGB32);
    QPainter p(&image);
    p.fillRect(0, 0, w / 2, h, Qt::red);
    p.fillRect(w / 2, 0, w - w / 2, h, Qt::blue);
    return image;
}

QByteArray Zlib(const QByteArray& data) { return qCompress(data, 9).mid(4); }

// The frame header (SOFn) of a JPEG, patched to announce w x h.
QByteArray WithFrameSize(QByteArray jpeg, int w, int h) {
    for (int i = 2; i + 9 < jpeg.size(); ++i) {
        const int m = quint8(jpeg[i + 1]);
        if (quint8(jpeg[i]) == 0xFF && (m == 0xC0 || m == 0xC2)) {
            jpeg[i + 5] = char(h >> 8);
            jpeg[i + 6] = char(h & 0xff);
            jpeg[i + 7] = char(w >> 8);
            jpeg[i + 8] = char(w & 0xff);
            break;
        }
    }
    return jpeg;
}

QByteArray Riff(const QByteArray& chunks, quint32 declaredChunk) {
    QByteArray body = "WEBP" + QByteArray("VP8L", 4);
    for (int i = 0; i < 4; ++i)
        body.append(char((declaredChunk >> (8 * i)) & 0xff));
    body += chunks;
    QByteArray out("RIFF", 4);
    const quint32 size = quint32(body.size());
    for (int i = 0; i < 4; ++i)
        out.append(char((size >> (8 * i)) & 0xff));
    return out + body;
}

}  // namespace

class tst_WebImageDecoder : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private slots:
    // First: the peak-memory ceiling only sees what rises above the process's earlier peak.
    void hostileFilesCostLittle_data() {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray text = QByteArray("k\0v", 3);
        QTest::newRow("text chunk after the pixels announcing 1.1 GB")
            << lxtest::TinyPng(lxtest::PngChunk("tEXt", text, 0x44000000));
        QTest::newRow("unknown chunk longer than the file")
            << lxtest::TinyPng(lxtest::PngChunk("abCd", "x", 0x7000000));
        QTest::newRow("text chunk over the bound")
            << lxtest::TinyPng(lxtest::PngChunk("tEXt", "k" + QByteArray(1, '\0') + QByteArray(300 * 1024, 'a')));
        // 64 MiB of text in 64 KiB of zlib data.
        QTest::newRow("compressed text bomb")
            << lxtest::TinyPng(lxtest::PngChunk("zTXt", "k" + QByteArray(2, '\0') + lxtest::ZlibBomb(64 << 20)));
        QTest::newRow("international text bomb") << lxtest::TinyPng(lxtest::PngChunk(
            "iTXt", "k" + QByteArray("\0\1\0", 3) + QByteArray("en\0\0", 4) + lxtest::ZlibBomb(64 << 20)));
        QByteArray profile(132, '\0');  // an ICC header announcing a 1 GiB profile
        profile[0] = 0x40;
        QTest::newRow("colour profile announcing 1 GiB")
            << lxtest::TinyPng(QByteArray(), lxtest::PngChunk("iCCP", "p" + QByteArray(2, '\0') + Zlib(profile)));
        QTest::newRow("no IEND") << lxtest::TinyPng().left(lxtest::TinyPng().size() - 12);
        const QByteArray progressive = lxtest::MakeJpeg(Halves(16, 16), {false, true, 0, {}});
        QTest::newRow("progressive jpeg needing 384 MB of coefficients") << WithFrameSize(progressive, 8000, 8000);
        QTest::newRow("jpeg over the pixel bound") << WithFrameSize(lxtest::MakeJpeg(Halves(16, 16), {}), 65000, 65000);
        QByteArray segment = lxtest::MakeJpeg(Halves(16, 16), {});
        segment.insert(2, QByteArray("\xFF\xE5\xFF\xF0", 4));  // APP5 of 65 KB in a 1 KB file
        QTest::newRow("jpeg segment longer than the file") << segment;
        // Qt's GIF reader reports the first frame's size and allocates the screen: 1.6 GB here.
        QByteArray screen =
            lxtest::ReadAll(lxtest::CopyFixture(QStringLiteral("frames2_4x4_100ms.gif"), m_dir.filePath("small.gif")));
        screen[6] = screen[8] = char(20000 & 0xff);
        screen[7] = screen[9] = char(20000 >> 8);
        QTest::newRow("gif screen of 20000 x 20000 around a 4 x 4 frame") << screen;
        QTest::newRow("webp chunk longer than its container") << Riff(QByteArray(16, 'x'), 0x40000000);
    }
    void hostileFilesCostLittle() {
        QFETCH(QByteArray, bytes);
        const QString path =
            lxtest::WriteFile(m_dir.filePath(QString::fromLatin1(QTest::currentDataTag()) + ".pic"), bytes);
        lxtest::CostMeter cost;
        QImage image;
        QString why;
        QVERIFY(!Decoder::DecodeStill(bytes, image, &why));
        QVERIFY(!why.isEmpty());
        // The same file shown by URL: refused as well, at no further cost.
        LxWebImageWidget w;
        QSignalSpy spy(&w, &LxWebImageWidget::ImageLoadStatusSignal);
        w.SetUrl(path);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(1).value<LxImageLoadStatus>(), LxImageLoadStatus::LoadFailed);
        QVERIFY2(cost.PeakGrowthMiB() < kHostileCeilingMiB, qPrintable(QString::number(cost.PeakGrowthMiB())));
        QVERIFY2(cost.CpuSeconds() < kHostileCeilingCpuSeconds, qPrintable(QString::number(cost.CpuSeconds())));
    }

    // Inputs found by fuzzing the decoder, kept as they were found (refused ones first, for the
    // peak-memory ceiling).
    void fuzzFindings_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("still");  // whether the first picture may be shown
        // Extended header announcing a 4606291 x 71 canvas: Qt's WebP reader allocates its 1.3 GB
        // while merely answering size(), and clears it when the alpha flag is set (second row).
        const QByteArray canvas = QByteArray::fromHex(
            "524946468400000057454250565038580a00000002000000524946460000414e494d06000000ffffffff0000414e"
            "4d46280000000000000000000300000300001e0000025650384c0f0000002f03c000000710fd8ffe0722a2ff0100"
            "414e4d46280000000000000000000300000300001e0000025650384c0f0000002f032d000007d0ff88fe0722a2ff"
            "0100");
        QTest::newRow("webp canvas allocated to read its size") << canvas << false;
        QByteArray cleared = canvas;
        cleared[20] = char(0x12);  // animation and alpha
        QTest::newRow("webp canvas cleared to read its size") << cleared << false;
        // Animated WebP, 4 x 9175044 canvas (36 Mpx) in 140 bytes: every frame played composed
        // 147 MB (over 10 s for eight frames under the sanitizers). Animations are held to a
        // smaller canvas than still pictures.
        // The seed GIF with two bytes of its screen changed: 4 x 226 by its first frame (what
        // Qt's reader answers), 65284 x 226 by its screen (what it allocates).
        QByteArray wide =
            lxtest::ReadAll(lxtest::CopyFixture(QStringLiteral("frames2_4x4_30ms.gif"), m_dir.filePath("seed.gif")));
        wide[7] = char(0xff);
        wide[8] = char(0xe2);
        QTest::newRow("gif screen wider than its frame") << wide << true;
        QTest::newRow("animated webp with a tall canvas")
            << QByteArray::fromHex(
                   "524946468400000057454250565038580a0000000200000003000003008c414e494d06000000ffffffff0000410"
                   "94d46280000000000000000000300000300001e0000025650384c0f0000002f03c000070010fd8ffe0722a2ff01"
                   "00414e4d46280000000000000000000300000300001e0000025650384c0f0000002f03c0000007d0ff88fe0722a2"
                   "ff0100")
            << true;  // its first frame alone is within the still bound
    }
    void fuzzFindings() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, still);
        lxtest::CostMeter cost;
        QVERIFY(!Decoder::CheckAnimated(bytes));
        CLxWebAnimatedImageWidget w;
        QVERIFY(!w.Load(QStringLiteral("http://x/f"), lxtest::WriteFile(m_dir.filePath("finding"), bytes)));
        QVERIFY2(cost.CpuSeconds() < kHostileCeilingCpuSeconds, qPrintable(QString::number(cost.CpuSeconds())));
        QImage image;
        QCOMPARE(Decoder::DecodeStill(bytes, image) && !image.isNull(), still);
        if (!still) {  // refused pictures cost nothing to refuse
            QVERIFY2(cost.CpuSeconds() < kHostileCeilingCpuSeconds, qPrintable(QString::number(cost.CpuSeconds())));
            QVERIFY2(cost.PeakGrowthMiB() < kHostileCeilingMiB, qPrintable(QString::number(cost.PeakGrowthMiB())));
        }
    }

    // Whole pictures pass, whatever notices their colour profile raises; the halves land where
    // the EXIF orientation puts them.
    void wholeJpegsDecode_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("rotated");
        const QImage halves = Halves(40, 20);
        auto row = [&](const char* tag, const lxtest::JpegOptions& o, bool rotated = false) {
            QTest::newRow(tag) << lxtest::MakeJpeg(halves, o) << (rotated ? QSize(20, 40) : QSize(40, 20)) << rotated;
        };
        row("baseline", {});
        row("icc profile", {false, false, 0, lxtest::IccMatrixProfile()});
        // A matrix profile whose tag table points past its end: Qt's colour management warns and
        // ignores it, the pixels are whole.
        QByteArray brokenIcc = lxtest::IccMatrixProfile();
        brokenIcc[128 + 4 + 4] = char(0x7f);
        row("icc profile damaged", {false, false, 0, brokenIcc});
        row("cmyk with a profile", {true, false, 0, lxtest::IccMatrixProfile()});
        row("progressive", {false, true, 0, {}});
        row("exif rotated", {false, false, 6, {}}, true);
        row("exif rotated, progressive, icc", {false, true, 6, lxtest::IccMatrixProfile()}, true);
        // A profile split over APP2 segments whose marker is damaged: the picture is still whole.
        QByteArray badIcc = lxtest::MakeJpeg(halves, {false, false, 0, lxtest::IccMatrixProfile()});
        const int icc = badIcc.indexOf("ICC_PROFILE");
        QVERIFY(icc > 0);
        badIcc[icc + 12] = 7;  // sequence number beyond the count
        QTest::newRow("damaged icc marker") << badIcc << QSize(40, 20) << false;
    }
    void wholeJpegsDecode() {
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, size);
        QFETCH(bool, rotated);
        QImage image;
        QString why;
        QVERIFY2(Decoder::DecodeStill(bytes, image, &why), qPrintable(why));
        QCOMPARE(image.size(), size);
        // Orientation 6 turns the picture a quarter clockwise: the left (red) half goes to the top.
        const QPoint red = rotated ? QPoint(10, 5) : QPoint(5, 10);
        const QPoint blue = rotated ? QPoint(10, 34) : QPoint(34, 10);
        QVERIFY2(lxtest::Near(image.pixelColor(red), Qt::red, 48), qPrintable(image.pixelColor(red).name()));
        QVERIFY2(lxtest::Near(image.pixelColor(blue), Qt::blue, 48), qPrintable(image.pixelColor(blue).name()));
    }

    // Damage stays refused for every kind of JPEG, and harmless PNG metadata stays accepted.
    void damageAndMetadata_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<bool>("accepted");
        const QImage noise = [] {
            QImage img(64, 64, QImage::Format_RGB32);
            for (int y = 0; y < 64; ++y)
                for (int x = 0; x < 64; ++x)
                    img.setPixel(x, y, qRgb(x * 4, (x * y) % 256, y * 4));
            return img;
        }();
        for (const auto& o : {lxtest::JpegOptions{false, true, 0, lxtest::IccMatrixProfile()},
                              lxtest::JpegOptions{true, false, 0, lxtest::IccMatrixProfile()},
                              lxtest::JpegOptions{false, false, 6, {}}}) {
            const QByteArray jpeg = lxtest::MakeJpeg(noise, o);
            const QString kind = o.bProgressive ? "progressive" : o.bCmyk ? "cmyk" : "exif";
            QTest::newRow(qPrintable(kind + " truncated")) << lxtest::Truncated(jpeg, jpeg.size() * 2 / 3) << false;
            QByteArray junk = jpeg;
            junk.insert(jpeg.size() / 2, QByteArray(40, '\xFF') + "\x10\x20\x30");
            QTest::newRow(qPrintable(kind + " scan damaged")) << junk << false;
        }
        QTest::newRow("png text") << lxtest::TinyPng(lxtest::PngChunk("tEXt", QByteArray("Title\0a picture", 15)))
                                  << true;
        QTest::newRow("png compressed text")
            << lxtest::TinyPng(lxtest::PngChunk("zTXt", "k" + QByteArray(2, '\0') + Zlib(QByteArray(4096, 'a'))))
            << true;
        // Damaged metadata is not damage to the picture: the decoder skips the chunk.
        QTest::newRow("png compressed text damaged")
            << lxtest::TinyPng(lxtest::PngChunk("zTXt", "k" + QByteArray(2, '\0') + "\x78\x9c garbage")) << true;
        QImage withProfile = Halves(8, 8);
        withProfile.setColorSpace(QColorSpace(QColorSpace::DisplayP3));
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        withProfile.save(&buffer, "PNG");
        QVERIFY(png.contains("iCCP"));
        QTest::newRow("png colour profile") << png << true;
        QTest::newRow("png trailing bytes after IEND") << lxtest::TinyPng() + "junk" << true;
    }
    void damageAndMetadata() {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, accepted);
        QImage image;
        QString why;
        QCOMPARE(Decoder::DecodeStill(bytes, image, &why), accepted);
        QCOMPARE(image.isNull(), !accepted);
    }
};

QTEST_MAIN(tst_WebImageDecoder)
#include "tst_WebImageDecoder.moc"
