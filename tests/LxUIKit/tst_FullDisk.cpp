// The kit's writers on a disk that fills up: zip extraction and packing, and downloads. Each case
// runs on a small tmpfs mounted for it (skipped where mounting is not allowed); sources and servers
// stay on the ordinary disk.

#include <LxUIKit/WebImage/LxHttpDownloadDelegate.h>
#include <LxUIKit/Zip/LxZip.h>
#include <LxUIKit/Zip/ZipQtWriter_p.h>

#include <QtGui/private/qzipwriter_p.h>
#include <QDir>
#include <QDirIterator>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include "ImageFixtures.h"
#include "LocalHttpServer.h"
#include "LxTestSupport.h"
#include "SmallDisk.h"

namespace {

// Bytes deflate cannot shrink, so an archive of them is as large as they are.
QByteArray Incompressible(int size) {
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator rng(size);
    for (char& c : bytes)
        c = char(rng.generate() & 0xff);
    return bytes;
}

// Every file below a folder (relative path), the disk's filler excepted.
QStringList Files(const QString& root) {
    QStringList out;
    QDirIterator it(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString rel = QDir(root).relativeFilePath(it.next());
        if (rel != QLatin1String(".filler"))
            out << rel;
    }
    out.sort();
    return out;
}

class Receiver : public LUIKitHttpDownloadDelegate {
public:
    QStringList calls;
    void OnDownloadSuccess(const QString&, const QString& path, const QByteArray&) override { calls << "ok " + path; }
    void OnDownloadFailed(const QString&, int network, int) override {
        calls << QStringLiteral("failed %1").arg(network);
    }
};

}  // namespace

class TestFullDisk : public QObject {
    Q_OBJECT

    QTemporaryDir m_src;  // on the ordinary disk
    std::unique_ptr<lxtest::SmallDisk> m_pDisk;
    QString Src(const QString& rel) const { return m_src.filePath(rel); }

private Q_SLOTS:
    void initTestCase() {
        QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
        lxtest::WriteFile(Src("tree/a.txt"), QByteArray("first entry, small"));
        lxtest::WriteFile(Src("tree/b/big.bin"), Incompressible(256 * 1024));
        lxtest::WriteFile(Src("tree/c.txt"), QByteArray("last entry"));
        QVERIFY(_zip::CompressDir(Src("tree"), Src("tree.zip")));
    }
    void init() { m_pDisk = std::make_unique<lxtest::SmallDisk>(); }
    void cleanup() {
        ILxUIKitHttpDownloadMgr::setDelegate(nullptr);
        m_pDisk.reset();
        lxtest::ResetGlobals();
    }

    void extractionOnFullDiskLeavesNoPartialFile_data() {
        QTest::addColumn<qint64>("leaveFree");
        QTest::newRow("room for the small entries") << qint64(64 * 1024);
        QTest::newRow("no room at all") << qint64(0);
    }

    void extractionOnFullDiskLeavesNoPartialFile() {
        QFETCH(qint64, leaveFree);
        LX_REQUIRE_SMALL_DISK(*m_pDisk);
        const QString dest = m_pDisk->filePath(QStringLiteral("dest"));
        // An older copy of the large entry is replaced only by a complete one.
        lxtest::WriteFile(dest + QStringLiteral("/tree/b/big.bin"), QByteArray("older copy"));
        QVERIFY(m_pDisk->fill(leaveFree));

        lxtest::LogCapture log;
        QVERIFY(!_zip::ExtractDir(Src("tree.zip"), dest));
        QVERIFY2(
            log.contains(QStringLiteral("cannot write ")) && log.contains(QStringLiteral("No space left on device")),
            qPrintable(log.texts().join(QLatin1Char('\n'))));
        // Whatever carries a final name is complete: no part file, no short file.
        for (const QString& rel : Files(dest)) {
            const QByteArray expected =
                rel == QLatin1String("tree/b/big.bin") ? QByteArray("older copy") : lxtest::ReadAll(Src(rel));
            QVERIFY2(!expected.isEmpty(), qPrintable(rel + QStringLiteral(" is left over")));
            QCOMPARE(lxtest::ReadAll(dest + QLatin1Char('/') + rel), expected);
        }
    }

    void packingOnFullDiskLeavesNoArchive_data() {
        QTest::addColumn<bool>("replacing");
        QTest::addColumn<qint64>("leaveFree");
        QTest::newRow("new archive, space runs out midway") << false << qint64(32 * 1024);
        QTest::newRow("new archive, no room at all") << false << qint64(0);
        QTest::newRow("replacing an archive") << true << qint64(32 * 1024);
    }

    void packingOnFullDiskLeavesNoArchive() {
        QFETCH(bool, replacing);
        QFETCH(qint64, leaveFree);
        LX_REQUIRE_SMALL_DISK(*m_pDisk);
        const QString out = m_pDisk->filePath(QStringLiteral("out"));
        const QString zipPath = out + QStringLiteral("/logs.zip");
        QByteArray previous;
        if (replacing) {
            QVERIFY(_zip::CompressFiles({Src("tree/a.txt")}, zipPath));
            previous = lxtest::ReadAll(zipPath);
        }
        QDir().mkpath(out);
        QVERIFY(m_pDisk->fill(leaveFree));

        lxtest::LogCapture log;
        QVERIFY(!_zip::CompressDir(Src("tree"), zipPath));
        QVERIFY2(log.contains(QStringLiteral("unable to write:") + zipPath),
                 qPrintable(log.texts().join(QLatin1Char('\n'))));
        // Nothing under the final name but the archive that was there; no temporary file either.
        QCOMPARE(Files(out), replacing ? QStringList{"logs.zip"} : QStringList());
        if (replacing)
            QCOMPARE(lxtest::ReadAll(zipPath), previous);

        m_pDisk->release();
        QVERIFY(_zip::CompressDir(Src("tree"), zipPath));
    }

    void packingThroughTheCallersWriterReportsFullDisk() {
        LX_REQUIRE_SMALL_DISK(*m_pDisk);
        const QString zipPath = m_pDisk->filePath(QStringLiteral("writer.zip"));
        QVERIFY(m_pDisk->fill(16 * 1024));
        lxtest::LogCapture log;
        {
            auto writer = QSharedPointer<QZipWriter>::create(zipPath);
            QVERIFY(!_zip::compress::CompressDir(writer, Src("tree"), QString(), m_src.path() + QLatin1Char('/')));
        }
        QVERIFY2(log.contains(QStringLiteral("No space left on device")),
                 qPrintable(log.texts().join(QLatin1Char('\n'))));
    }

    void downloadThatCannotBeWrittenFails_data() {
        QTest::addColumn<int>("bodySize");
        QTest::addColumn<qint64>("leaveFree");
        // A small body sits in the file's buffer until the download ends; a large one fails midway.
        QTest::newRow("small body, no room at all") << 2000 << qint64(0);
        QTest::newRow("large body, space runs out midway") << 512 * 1024 << qint64(16 * 1024);
    }

    void downloadThatCannotBeWrittenFails() {
        QFETCH(int, bodySize);
        QFETCH(qint64, leaveFree);
        LX_REQUIRE_SMALL_DISK(*m_pDisk);
        lxtest::LocalHttpServer server;
        QVERIFY(server.Start());
        server.SetRoute(QStringLiteral("/pic.png"), 200, Incompressible(bodySize));
        const QString url = server.Url(QStringLiteral("/pic.png"));
        const QString dir = m_pDisk->filePath(QStringLiteral("webimage"));
        ILxUIKitHttpDownloadMgr::setDelegate(new CLxHttpDownloadDelegate(dir));
        QDir().mkpath(dir);
        QVERIFY(m_pDisk->fill(leaveFree));

        lxtest::LogCapture log;
        Receiver receiver;
        ILxUIKitHttpDownloadMgr::download(url.toStdString(), &receiver, lxuikit_http::HttpWorkPool::Image);
        QTRY_VERIFY(!receiver.calls.isEmpty());
        QCOMPARE(receiver.calls, QStringList{QStringLiteral("failed %1").arg(int(QNetworkReply::UnknownContentError))});
        QVERIFY2(log.contains(QStringLiteral("download ") + url + QStringLiteral(" failed")) &&
                     log.contains(QStringLiteral("No space left on device")),
                 qPrintable(log.texts().join(QLatin1Char('\n'))));
        QCOMPARE(Files(dir), QStringList());  // neither the file nor its part file
    }
};

QTEST_MAIN(TestFullDisk)
#include "tst_FullDisk.moc"
