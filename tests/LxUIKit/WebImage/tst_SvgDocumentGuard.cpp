// Hostile SVG from the network: every bound of the document check, and the SVG widget refusing
// what the check refuses without hanging.

#include "ImageFixtures.h"
#include "LxTestSupport.h"

#include <LxUIKit/WebImage/LxSvgDocumentGuard.h>
#include <LxUIKit/WebImage/LxWebSvgImageWidget.h>

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

using Verdict = CLxSvgDocumentGuard::Verdict;
Q_DECLARE_METATYPE(Verdict)

namespace {

const QByteArray kHead =
    "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
    "width='10' height='10'>";

QByteArray Doc(const QByteArray& body) { return kHead + body + "</svg>"; }

quint32 Crc32(const QByteArray& data) {
    quint32 crc = 0xffffffffu;
    for (char ch : data) {
        crc ^= quint8(ch);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xedb88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

// gzip around the raw deflate data of qCompress (which writes a 4-byte size, then zlib).
QByteArray Gzip(const QByteArray& data) {
    const QByteArray z = qCompress(data, 9);
    const QByteArray deflate = z.mid(4 + 2, z.size() - 4 - 2 - 4);
    QByteArray out("\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03", 10);
    out += deflate;
    const quint32 crc = Crc32(data), size = quint32(data.size());
    for (int i = 0; i < 4; ++i)
        out.append(char((crc >> (8 * i)) & 0xff));
    for (int i = 0; i < 4; ++i)
        out.append(char((size >> (8 * i)) & 0xff));
    return out;
}

QByteArray DataUri(const QImage& image, const char* format, const char* mime) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return QByteArray("data:") + mime + ";base64," + bytes.toBase64();
}

}  // namespace

class tst_SvgDocumentGuard : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

private slots:
    void verdicts_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<Verdict>("verdict");

        QTest::newRow("plain") << Doc("<rect width='5' height='5' fill='red'/>") << Verdict::Ok;
        QTest::newRow("doctype without entities")
            << QByteArray(
                   "<?xml version='1.0'?><!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' "
                   "'http://www.w3.org/Graphics/SVG/1.1/DTD/svg11.dtd'>") +
                   Doc("<rect width='5' height='5'/>")
            << Verdict::Ok;
        QTest::newRow("script is kept and never run")
            << Doc("<script>while(true){}</script><rect width='5' height='5' onload='alert(1)'/>") << Verdict::Ok;
        QTest::newRow("local use and gradient refs")
            << Doc("<defs><linearGradient id='g'><stop offset='0'/></linearGradient><rect id='r' width='2' "
                   "height='2' fill='url(#g)'/></defs><use xlink:href='#r'/><use href='#r' x='3'/>")
            << Verdict::Ok;
        QTest::newRow("link to elsewhere is only a link")
            << Doc("<a xlink:href='https://example.com/'><rect width='5' height='5'/></a>") << Verdict::Ok;
        QTest::newRow("small embedded png")
            << Doc("<image width='4' height='4' xlink:href='" +
                   DataUri(lxtest::MakeTestImage(4, 4, Qt::red), "PNG", "image/png") + "'/>")
            << Verdict::Ok;
        QTest::newRow("svgz") << Gzip(Doc("<rect width='5' height='5'/>")) << Verdict::Ok;

        QTest::newRow("not svg") << QByteArray("<html><body>hello</body></html>") << Verdict::NotSvg;
        QTest::newRow("not xml") << QByteArray("GIF89a\x01\x00") << Verdict::Malformed;
        QTest::newRow("empty") << QByteArray() << Verdict::Malformed;
        QTest::newRow("truncated") << Doc("<rect width='5' height='5'/>").left(60) << Verdict::Malformed;
        QTest::newRow("broken gzip") << Gzip(Doc("<rect/>")).left(20) << Verdict::Malformed;

        QByteArray many;
        for (int i = 0; i < CLxSvgDocumentGuard::kMaxElements; ++i)
            many += "<rect/>";
        QTest::newRow("too many elements") << Doc(many) << Verdict::TooManyElements;
        QTest::newRow("just enough elements") << Doc(many.left(many.size() - 7)) << Verdict::Ok;

        QByteArray deep = QByteArray("<g>").repeated(CLxSvgDocumentGuard::kMaxDepth) +
                          QByteArray("</g>").repeated(CLxSvgDocumentGuard::kMaxDepth);
        QTest::newRow("too deep") << Doc(deep) << Verdict::TooDeep;
        QByteArray deepOk = QByteArray("<g>").repeated(CLxSvgDocumentGuard::kMaxDepth - 1) +
                            QByteArray("</g>").repeated(CLxSvgDocumentGuard::kMaxDepth - 1);
        QTest::newRow("deep but within bound") << Doc(deepOk) << Verdict::Ok;
        QTest::newRow("very deep, unclosed") << Doc(QByteArray("<g>").repeated(200000)) << Verdict::TooDeep;

        QTest::newRow("entity bomb")
            << QByteArray(
                   "<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;'>]>") +
                   Doc("<text>&b;&b;&b;</text>")
            << Verdict::EntityDeclaration;
        QTest::newRow("external image file")
            << Doc("<image width='5' height='5' xlink:href='file:///etc/passwd'/>") << Verdict::ExternalReference;
        QTest::newRow("external image http")
            << Doc("<image width='5' height='5' href='http://127.0.0.1:1/x.png'/>") << Verdict::ExternalReference;
        QTest::newRow("relative image") << Doc("<image width='5' height='5' xlink:href='../../secret.png'/>")
                                        << Verdict::ExternalReference;
        QTest::newRow("external use") << Doc("<use xlink:href='other.svg#x'/>") << Verdict::ExternalReference;
        QTest::newRow("script source") << Doc("<script xlink:href='https://example.com/a.js'/>")
                                       << Verdict::ExternalReference;

        QTest::newRow("embedded svg") << Doc("<image width='5' height='5' xlink:href='data:image/svg+xml;base64," +
                                             Doc("<rect/>").toBase64() + "'/>")
                                      << Verdict::EmbeddedImage;
        QImage huge(5000, 4000, QImage::Format_Mono);
        huge.fill(0);
        QTest::newRow("embedded huge png")
            << Doc("<image width='5' height='5' xlink:href='" + DataUri(huge, "PNG", "image/png") + "'/>")
            << Verdict::EmbeddedImage;
        QTest::newRow("embedded garbage")
            << Doc("<image width='5' height='5' xlink:href='data:image/png;base64,AAAA'/>") << Verdict::EmbeddedImage;

        // Ten levels of ten <use> each: 10^10 shapes drawn from 100 elements.
        QByteArray uses = "<defs><rect id='l0' width='1' height='1'/>";
        for (int level = 1; level <= 10; ++level) {
            uses += "<g id='l" + QByteArray::number(level) + "'>";
            for (int i = 0; i < 10; ++i)
                uses += "<use xlink:href='#l" + QByteArray::number(level - 1) + "'/>";
            uses += "</g>";
        }
        uses += "</defs><use xlink:href='#l10'/>";
        QTest::newRow("use expansion bomb") << Doc(uses) << Verdict::UseExpansion;
        QTest::newRow("use cycle") << Doc("<g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#a'/></g>")
                                   << Verdict::UseExpansion;
        QTest::newRow("use of its own ancestor")
            << Doc("<g id='a'><g><use xlink:href='#a'/></g></g>") << Verdict::UseExpansion;
        QTest::newRow("use of a missing id") << Doc("<use xlink:href='#nothing'/>") << Verdict::Ok;

        QTest::newRow("document over the bound")
            << Doc("<desc>" + QByteArray(int(CLxSvgDocumentGuard::kMaxDocumentBytes), 'x') + "</desc>")
            << Verdict::TooLarge;
        // 64 MiB of spaces compress to about 64 KiB: inflation stops at the bound.
        QTest::newRow("gzip bomb") << Gzip(kHead + QByteArray(64 * 1024 * 1024, ' ') + "</svg>") << Verdict::TooLarge;
    }
    void verdicts() {
        QFETCH(QByteArray, bytes);
        QFETCH(Verdict, verdict);
        QByteArray document;
        const Verdict got = CLxSvgDocumentGuard::Check(bytes, document);
        QCOMPARE(CLxSvgDocumentGuard::VerdictName(got), CLxSvgDocumentGuard::VerdictName(verdict));
        QCOMPARE(document.isEmpty(), got != Verdict::Ok);

        // The widget shows exactly what the check lets through.
        const QString path = lxtest::WriteFile(m_dir.filePath(QStringLiteral("doc.svg")), bytes);
        CLxWebSvgImageWidget w;
        w.resize(20, 20);
        const bool loaded = w.Load(QStringLiteral("http://x/doc.svg"), path);
        if (got != Verdict::Ok) {
            QVERIFY(!loaded);
            QVERIFY(w.GetImageSize().isEmpty());
        } else {
            QVERIFY(loaded);
            w.grab();  // renders without running anything
        }
    }

    void fileOverTheBoundIsNotRead() {
        const QString path = lxtest::WriteFile(m_dir.filePath(QStringLiteral("big.svg")),
                                               Doc(QByteArray(int(CLxSvgDocumentGuard::kMaxFileBytes), ' ')));
        QByteArray document;
        QCOMPARE(int(CLxSvgDocumentGuard::ReadChecked(path, document)), int(Verdict::TooLarge));
        QCOMPARE(int(CLxSvgDocumentGuard::ReadChecked(m_dir.filePath(QStringLiteral("none.svg")), document)),
                 int(Verdict::Unreadable));
    }
};

QTEST_MAIN(tst_SvgDocumentGuard)
#include "tst_SvgDocumentGuard.moc"
