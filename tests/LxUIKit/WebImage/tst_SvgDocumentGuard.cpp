// Hostile SVG from the network: every bound of the document check, and the SVG widget refusing
// what the check refuses without hanging.

#include "ImageFixtures.h"
#include "LxTestSupport.h"

#include <LxUIKit/WebImage/LxSvgDocumentGuard_p.h>
#include <LxUIKit/WebImage/LxWebSvgImageWidget_p.h>

#include <QBuffer>
#include <QPainter>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <memory>

using Guard = CLxSvgDocumentGuard;
using Verdict = Guard::Verdict;
Q_DECLARE_METATYPE(Verdict)

namespace {

const QByteArray kHead =
    "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='10' height='10'>";

QByteArray Doc(const QByteArray& body) { return kHead + body + "</svg>"; }

// gzip around the raw deflate data of qCompress (a 4-byte size, a 2-byte zlib header, the data,
// a 4-byte Adler-32).
QByteArray Gzip(const QByteArray& data) {
    quint32 crc = 0xffffffffu;
    for (char ch : data) {
        crc ^= quint8(ch);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xedb88320u & (0u - (crc & 1u)));
    }
    const QByteArray z = qCompress(data, 9);
    QByteArray out = QByteArray("\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03", 10) + z.mid(6, z.size() - 10);
    for (quint32 v : {~crc, quint32(data.size())})
        for (int i = 0; i < 4; ++i)
            out.append(char((v >> (8 * i)) & 0xff));
    return out;
}

QByteArray Href(const QByteArray& uri) { return Doc("<image width='5' height='5' xlink:href='" + uri + "'/>"); }

// Peak memory and CPU allowed for checking and loading one hostile document (unguarded, the
// disguised pictures below took up to 1.55 GB and 5 s in the renderer).
constexpr double kHostileCeilingMiB = 48 * lxtest::CostMeter::kSanitizerFactor;
constexpr double kHostileCeilingCpuSeconds = 1.0 * lxtest::CostMeter::kSanitizerFactor;

QByteArray Image(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return Doc("<image width='5' height='5' xlink:href='data:image/png;base64," + bytes.toBase64() + "'/>");
}

}  // namespace

class tst_SvgDocumentGuard : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
    QString m_strSecret =
        lxtest::SaveImage(m_dir.filePath("secret.png"), lxtest::MakeTestImage(8, 8, Qt::green), "PNG");

private slots:
    // First: the peak-memory ceiling only sees what rises above the process's earlier peak.
    void hostileDocumentsCostLittle_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Verdict>("verdict");
        using V = Verdict;
        const QByteArray tiny = "data:image/png;base64," + lxtest::TinyPng().toBase64();
        // The renderer decodes what follows the last "base64,": a reader splitting at the first
        // comma sees the tiny PNG.
        QTest::newRow("144 Mpx png behind a tiny png")
            << Href(tiny + "#base64," + lxtest::BlankPng(12000, 12000).toBase64()) << V::EmbeddedImage;
        const QByteArray peeking =
            "<svg xmlns='http://www.w3.org/2000/svg' "
            "xmlns:xlink='http://www.w3.org/1999/xlink' width='8' height='8'><image "
            "width='8' height='8' xlink:href='" +
            m_strSecret.toUtf8() + "'/></svg>";
        QTest::newRow("hidden svg showing a local file")
            << Href(tiny + "#base64," + peeking.toBase64()) << V::EmbeddedImage;
        QTest::newRow("header without base64")
            << Href("data:image/png," + lxtest::TinyPng().toPercentEncoding()) << V::EmbeddedImage;
        QTest::newRow("upper-case scheme is a file name") << Href("DATA:image/png;base64,AAAA") << V::ExternalReference;
        QTest::newRow("png with a 1.1 GB text chunk")
            << Href("data:image/png;base64," +
                    lxtest::TinyPng(lxtest::PngChunk("tEXt", QByteArray("k\0v", 3), 0x44000000)).toBase64())
            << V::EmbeddedImage;
        // Each picture within the bound, together over it.
        QTest::newRow("five 4 Mpx pngs") << Doc(("<image width='5' height='5' xlink:href='data:image/png;base64," +
                                                 lxtest::BlankPng(4000, 1000).toBase64() + "'/>")
                                                    .repeated(5))
                                         << V::EmbeddedImage;
        // Chains of <use> links, one element each: refused without the guard's own recursion.
        for (int links : {10000, Guard::kMaxElements - 2}) {
            // Each link refers to the next one in the file, so a walk meets them nested.
            QByteArray chain;
            for (int i = links; i >= 1; --i)
                chain += "<use id='c" + QByteArray::number(i) + "' href='#c" + QByteArray::number(i - 1) + "'/>";
            chain += "<rect id='c0' width='1' height='1'/>";
            QTest::newRow(qPrintable(QStringLiteral("use chain of %1 links").arg(links)))
                << Doc(chain) << V::UseExpansion;
        }
        // A thousand <use> of an id shared by a thousand elements.
        QTest::newRow("shared id") << Doc(QByteArray("<rect id='s'/>").repeated(1000) +
                                          QByteArray("<use href='#s'/>").repeated(1000))
                                   << V::UseExpansion;
    }
    void hostileDocumentsCostLittle() {
        QFETCH(QByteArray, bytes);
        QFETCH(Verdict, verdict);
        lxtest::CostMeter cost;
        // On a worker thread with a small stack, as hosts check documents off the GUI thread.
        Verdict got = Verdict::Ok;
        QByteArray document;
        std::unique_ptr<QThread> worker(QThread::create([&] { got = Guard::Check(bytes, document); }));
        worker->setStackSize(512 * 1024);
        worker->start();
        QVERIFY(worker->wait(10000));
        QCOMPARE(Guard::VerdictName(got), Guard::VerdictName(verdict));
        CLxWebSvgImageWidget w;
        QVERIFY(!w.Load(QStringLiteral("http://x/h.svg"), lxtest::WriteFile(m_dir.filePath("h.svg"), bytes)));
        QVERIFY2(cost.PeakGrowthMiB() < kHostileCeilingMiB, qPrintable(QString::number(cost.PeakGrowthMiB())));
        QVERIFY2(cost.CpuSeconds() < kHostileCeilingCpuSeconds, qPrintable(QString::number(cost.CpuSeconds())));
    }

    // What the guard lets through renders what the guard saw.
    void acceptedPicturesRenderAsChecked() {
        QImage red(8, 8, QImage::Format_RGB32);
        red.fill(Qt::red);
        const QByteArray jpeg = lxtest::MakeJpeg(red, {});
        QByteArray document;
        const QByteArray doc =
            Doc("<image width='10' height='10' xlink:href='  data:image/jpeg;base64," + jpeg.toBase64() + "  '/>");
        QCOMPARE(Guard::VerdictName(Guard::Check(doc, document)), Guard::VerdictName(Verdict::Ok));
        QSvgRenderer renderer(document);
        QImage out(10, 10, QImage::Format_ARGB32);
        out.fill(Qt::transparent);
        QPainter p(&out);
        renderer.render(&p);
        p.end();
        QVERIFY(lxtest::Near(out.pixelColor(2, 2), Qt::red, 40));
    }

    void verdicts_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Verdict>("verdict");
        auto row = [](const char* tag, const QByteArray& bytes, Verdict verdict) {
            QTest::newRow(tag) << bytes << verdict;
        };
        using V = Verdict;

        row("plain", Doc("<rect width='5' height='5' fill='red'/>"), V::Ok);
        row("doctype without entities", "<!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' 'svg11.dtd'>" + Doc("<rect/>"),
            V::Ok);
        row("script is kept and never run", Doc("<script>while(true){}</script><rect onload='alert(1)'/>"), V::Ok);
        row("local use and gradient refs",
            Doc("<linearGradient id='g'/><rect id='r' fill='url(#g)'/><use xlink:href='#r'/><use href='#r'/>"), V::Ok);
        row("link to elsewhere is only a link", Doc("<a xlink:href='https://example.com/'><rect/></a>"), V::Ok);
        row("small embedded png", Image(lxtest::MakeTestImage(4, 4, Qt::red)), V::Ok);
        row("svgz", Gzip(Doc("<rect width='5' height='5'/>")), V::Ok);

        row("not svg", QByteArray("<html><body>hello</body></html>"), V::NotSvg);
        row("not xml", QByteArray("GIF89a\x01\x00"), V::Malformed);
        row("empty", QByteArray(), V::Malformed);
        row("truncated", Doc("<rect width='5' height='5'/>").left(60), V::Malformed);
        row("broken gzip", Gzip(Doc("<rect/>")).left(20), V::Malformed);

        const QByteArray many = QByteArray("<rect/>").repeated(Guard::kMaxElements);  // with <svg>, one too many
        row("too many elements", Doc(many), V::TooManyElements);
        row("just enough elements", Doc(many.left(many.size() - 7)), V::Ok);
        auto nested = [](int depth) { return QByteArray("<g>").repeated(depth) + QByteArray("</g>").repeated(depth); };
        row("too deep", Doc(nested(Guard::kMaxDepth)), V::TooDeep);
        row("deep but within bound", Doc(nested(Guard::kMaxDepth - 1)), V::Ok);
        row("very deep, unclosed", Doc(QByteArray("<g>").repeated(200000)), V::TooDeep);

        row("entity bomb",
            "<!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;'>]>" + Doc("<text>&b;</text>"),
            V::EntityDeclaration);
        row("external image file", Doc("<image xlink:href='file:///etc/passwd'/>"), V::ExternalReference);
        row("external image http", Doc("<image href='http://127.0.0.1:1/x.png'/>"), V::ExternalReference);
        row("external use", Doc("<use xlink:href='other.svg#x'/>"), V::ExternalReference);
        row("script source", Doc("<script xlink:href='https://example.com/a.js'/>"), V::ExternalReference);

        row("embedded svg", Doc("<image xlink:href='data:image/svg+xml;base64," + Doc("<rect/>").toBase64() + "'/>"),
            V::EmbeddedImage);
        QImage huge(5000, 4000, QImage::Format_Mono);
        huge.fill(0);
        row("embedded huge png", Image(huge), V::EmbeddedImage);
        row("embedded garbage", Doc("<image xlink:href='data:image/png;base64,AAAA'/>"), V::EmbeddedImage);

        // Ten levels of ten <use> each: 10^10 shapes drawn from 100 elements.
        QByteArray uses = "<defs><rect id='l0' width='1' height='1'/>";
        for (int level = 1; level <= 10; ++level)
            uses += "<g id='l" + QByteArray::number(level) + "'>" +
                    ("<use xlink:href='#l" + QByteArray::number(level - 1) + "'/>").repeated(10) + "</g>";
        row("use expansion bomb", Doc(uses + "</defs><use xlink:href='#l10'/>"), V::UseExpansion);
        row("use cycle", Doc("<g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g>"),
            V::UseExpansion);
        row("use of its own ancestor", Doc("<g id='a'><g><use xlink:href='#a'/></g></g>"), V::UseExpansion);
        row("use of a missing id", Doc("<use xlink:href='#nothing'/>"), V::Ok);
        // A chain of single <use>s draws little but nests the renderer's recursion.
        auto chain = [](int links) {
            QByteArray doc = "<defs><rect id='c0' width='1' height='1'/>";
            for (int i = 1; i <= links; ++i)
                doc += "<g id='c" + QByteArray::number(i) + "'><use xlink:href='#c" + QByteArray::number(i - 1) +
                       "'/></g>";
            return Doc(doc + "</defs><use xlink:href='#c" + QByteArray::number(links) + "'/>");
        };
        // chain(n) is n + 1 hops deep, counting the outermost <use>.
        row("use chain at the bound", chain(Guard::kMaxUseHops - 1), V::Ok);
        row("use chain one hop over", chain(Guard::kMaxUseHops), V::UseExpansion);

        row("document over the bound", Doc("<desc>" + QByteArray(int(Guard::kMaxDocumentBytes), 'x') + "</desc>"),
            V::TooLarge);
        // 64 MiB of spaces compress to about 64 KiB: inflation stops at the bound.
        row("gzip bomb", Gzip(kHead + QByteArray(64 * 1024 * 1024, ' ') + "</svg>"), V::TooLarge);
    }

    void verdicts() {
        QFETCH(QByteArray, bytes);
        QFETCH(Verdict, verdict);
        QByteArray document;
        const Verdict got = Guard::Check(bytes, document);
        QCOMPARE(Guard::VerdictName(got), Guard::VerdictName(verdict));
        QCOMPARE(document.isEmpty(), got != Verdict::Ok);

        // The widget shows exactly what the check lets through, and renders it without running anything.
        CLxWebSvgImageWidget w;
        w.resize(20, 20);
        QCOMPARE(w.Load(QStringLiteral("http://x/doc.svg"), lxtest::WriteFile(m_dir.filePath("doc.svg"), bytes)),
                 got == Verdict::Ok);
        if (got == Verdict::Ok)
            w.grab();
        else
            QVERIFY(w.GetImageSize().isEmpty());
    }

    void fileOverTheBoundIsNotRead() {
        const QString path =
            lxtest::WriteFile(m_dir.filePath("big.svg"), Doc(QByteArray(int(Guard::kMaxFileBytes), ' ')));
        QByteArray document;
        QCOMPARE(int(Guard::ReadChecked(path, document)), int(Verdict::TooLarge));
        QCOMPARE(int(Guard::ReadChecked(m_dir.filePath("none.svg"), document)), int(Verdict::Unreadable));
    }
};

QTEST_MAIN(tst_SvgDocumentGuard)
#include "tst_SvgDocumentGuard.moc"
