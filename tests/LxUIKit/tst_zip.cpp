// Zip helpers: round trips, naming, refused archives and failures with their log texts.

#include <LxUIKit/Zip/LxZip.h>

#include <QtGui/private/qzipreader_p.h>
#include <QtGui/private/qzipwriter_p.h>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QtTest>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "LxTestSupport.h"

namespace {

QStringList Entries(const QString& zip) {
    QStringList out;
    QZipReader r(zip);
    for (const auto& e : r.fileInfoList())
        out << e.filePath;
    out.sort();
    return out;
}

QStringList Tree(const QString& root) {
    QStringList out;
    QDirIterator it(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        out << QDir(root).relativeFilePath(it.next());
    out.sort();
    return out;
}

QByteArray Read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// An archive with exactly the given entries, written without our own checks.
QString CraftArchive(const QString& path, const QList<QPair<QString, QByteArray>>& files,
                     const QString& link = QString(), const QString& linkTarget = QString()) {
    QZipWriter w(path);
    for (const auto& f : files)
        w.addFile(f.first, f.second);
    if (!link.isEmpty())
        w.addSymLink(link, linkTarget);
    w.close();
    return path;
}

}  // namespace

class TestZip : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init() { m_root.reset(new QTemporaryDir); }
    void folderRoundTripKeepsHiddenEmptyModesAndTimes();
    void entriesAreNamedFromTheItemsParent();
    void folderPathsAreNormalised_data();
    void folderPathsAreNormalised();
    void specialFilesAreSkipped();
    void failuresLogTheirTexts();
    void refusesArchivesThatLeaveTheDestination_data();
    void refusesArchivesThatLeaveTheDestination();
    void plantedLinkOnDiskIsNotFollowed();
    void corruptArchivesAndFailedWritesFail();
    void tooLargeFilesAreRefused();

private:
    QString P(const QString& rel) const { return m_root->path() + QLatin1Char('/') + rel; }
    std::unique_ptr<QTemporaryDir> m_root;
};

void TestZip::folderRoundTripKeepsHiddenEmptyModesAndTimes() {
    lxtest::WriteFile(P("logs/app.log"), "line1\nline2\n");
    lxtest::WriteFile(P("logs/.hidden"), "secret");
    lxtest::WriteFile(P("logs/.cfg/inner.txt"), "inner");
    lxtest::WriteFile(P("logs/bin/run.sh"), "#!/bin/sh\necho hi\n");
    lxtest::WriteFile(P("logs/data.bin"), QByteArray(200000, '\x7f') + QByteArray(1000, '\0'));
    QDir().mkpath(P("logs/empty"));
    QFile::setPermissions(P("logs/bin/run.sh"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup);
    const QDateTime old = QDateTime::fromString(QStringLiteral("2021-03-04T05:06:08"), Qt::ISODate);
    {
        QFile f(P("logs/app.log"));
        QVERIFY(f.open(QIODevice::ReadWrite));
        QVERIFY(f.setFileTime(old, QFileDevice::FileModificationTime));
    }
    // Links are left out, whether to files or folders.
    QVERIFY(QFile::link(P("logs/app.log"), P("logs/link.log")));
    QVERIFY(QFile::link(P("logs/empty"), P("logs/linkdir")));

    QVERIFY(_zip::CompressDir(P("logs"), P("out/logs.zip")));
    const QStringList entries = Entries(P("out/logs.zip"));
    QCOMPARE(entries, (QStringList{"logs", "logs/.cfg", "logs/.cfg/inner.txt", "logs/.hidden", "logs/app.log",
                                   "logs/bin", "logs/bin/run.sh", "logs/data.bin", "logs/empty"}));

    QVERIFY(_zip::ExtractDir(P("out/logs.zip"), P("x")));
    QCOMPARE(Tree(P("x")), (QStringList{"logs", "logs/.cfg", "logs/.cfg/inner.txt", "logs/.hidden", "logs/app.log",
                                        "logs/bin", "logs/bin/run.sh", "logs/data.bin", "logs/empty"}));
    for (const char* f : {"app.log", ".hidden", ".cfg/inner.txt", "bin/run.sh", "data.bin"})
        QCOMPARE(Read(P("x/logs/") + QLatin1String(f)), Read(P("logs/") + QLatin1String(f)));
    QVERIFY(QFileInfo(P("x/logs/bin/run.sh")).permissions() & QFile::ExeOwner);
    QVERIFY(!(QFileInfo(P("x/logs/app.log")).permissions() & QFile::ExeOwner));
    // Zip times have two-second precision.
    QVERIFY(qAbs(QFileInfo(P("x/logs/app.log")).lastModified().secsTo(old)) <= 2);
}

void TestZip::entriesAreNamedFromTheItemsParent() {
    lxtest::WriteFile(P("deep/a/one.txt"), "1");
    lxtest::WriteFile(P("deep/b/two.txt"), "2");
    lxtest::WriteFile(P("deep/top.txt"), "t");
    QVERIFY(_zip::CompressFiles({P("deep/a"), P("deep/top.txt"), P("deep/b/two.txt")}, P("mix.zip")));
    QCOMPARE(Entries(P("mix.zip")), (QStringList{"a", "a/one.txt", "top.txt", "two.txt"}));
    // A relative path is named the same way.
    const QString cwd = QDir::currentPath();
    QDir::setCurrent(P("deep"));
    const bool ok = _zip::CompressFiles({QStringLiteral("a")}, P("rel.zip"));
    QDir::setCurrent(cwd);
    QVERIFY(ok);
    QCOMPARE(Entries(P("rel.zip")), (QStringList{"a", "a/one.txt"}));

    // A hidden item given on its own keeps its leading dot through a round trip.
    lxtest::WriteFile(P("deep/.profile"), "p");
    QVERIFY(_zip::CompressFiles({P("deep/.profile")}, P("hidden.zip")));
    QVERIFY(_zip::ExtractDir(P("hidden.zip"), P("hx")));
    QCOMPARE(Tree(P("hx")), QStringList{".profile"});
}

void TestZip::folderPathsAreNormalised_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("throughWriter");
    for (bool w : {false, true}) {
        const char* via = w ? " (writer)" : "";
        QTest::newRow(qPrintable(QStringLiteral("plain%1").arg(via))) << "logs" << w;
        QTest::newRow(qPrintable(QStringLiteral("trailing slash%1").arg(via))) << "logs/" << w;
        QTest::newRow(qPrintable(QStringLiteral("two slashes%1").arg(via))) << "logs//" << w;
        QTest::newRow(qPrintable(QStringLiteral("dot%1").arg(via))) << "logs/." << w;
        QTest::newRow(qPrintable(QStringLiteral("dot dot%1").arg(via))) << "logs/sub/.." << w;
        QTest::newRow(qPrintable(QStringLiteral("dot dot in the middle%1").arg(via))) << "other/../logs/./" << w;
    }
}

void TestZip::folderPathsAreNormalised() {
    QFETCH(QString, path);
    QFETCH(bool, throughWriter);
    lxtest::WriteFile(P("logs/a.txt"), "a");
    lxtest::WriteFile(P("logs/sub/b.txt"), "b");
    QDir().mkpath(P("other"));
    if (throughWriter) {
        // A caller of the writer overloads may hand in an unnormalised folder and prefix as well.
        auto writer = QSharedPointer<QZipWriter>::create(P("logs.zip"));
        QVERIFY(_zip::compress::CompressDir(writer, P(path), QString(), m_root->path() + QStringLiteral("/./")));
    } else {
        QVERIFY(_zip::CompressDir(P(path), P("logs.zip")));
    }
    QCOMPARE(Entries(P("logs.zip")), (QStringList{"logs", "logs/a.txt", "logs/sub", "logs/sub/b.txt"}));
    QVERIFY(_zip::ExtractDir(P("logs.zip"), P("x")));
    QCOMPARE(Tree(P("x")), (QStringList{"logs", "logs/a.txt", "logs/sub", "logs/sub/b.txt"}));
}

void TestZip::specialFilesAreSkipped() {
    lxtest::WriteFile(P("logs/a.txt"), "a");
    QCOMPARE(::mkfifo(QFile::encodeName(P("logs/fifo")).constData(), 0600), 0);
    const int sock = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    const QByteArray sockPath = QFile::encodeName(P("logs/sock"));
    QVERIFY(size_t(sockPath.size()) < sizeof(addr.sun_path));
    qstrcpy(addr.sun_path, sockPath.constData());
    QCOMPARE(::bind(sock, reinterpret_cast<sockaddr*>(&addr), sizeof(addr)), 0);
    lxtest::LogCapture log;
    const bool packed = _zip::CompressDir(P("logs"), P("logs.zip"));
    // A special file given on its own is skipped the same way (and never opened: a FIFO would block).
    const bool packedFifo = _zip::CompressFiles({P("logs/fifo"), P("logs/a.txt")}, P("fifo.zip"));
    ::close(sock);
    QVERIFY(packed);
    QVERIFY(packedFifo);
    QVERIFY(log.hasExact(P("logs/fifo") + QStringLiteral(" is not a regular file, folder or link; skipped")));
    QVERIFY(log.hasExact(P("logs/sock") + QStringLiteral(" is not a regular file, folder or link; skipped")));
    QCOMPARE(Entries(P("logs.zip")), (QStringList{"logs", "logs/a.txt"}));
    QCOMPARE(Entries(P("fifo.zip")), QStringList{"a.txt"});
}

void TestZip::failuresLogTheirTexts() {
    lxtest::LogCapture log;
    QVERIFY(!_zip::CompressFiles({}, P("never/empty.zip")));
    QVERIFY(log.hasExact(QStringLiteral("files is empty")));
    QVERIFY(!QFileInfo::exists(P("never")));

    QVERIFY(!_zip::CompressDir(P("missing"), P("m.zip")));
    QVERIFY(log.hasExact(P("missing") + QStringLiteral("  not found! ")));
    QVERIFY(!_zip::CompressFiles({P("missing.txt")}, P("m2.zip")));
    QVERIFY(log.hasExact(P("missing.txt") + QStringLiteral("  not found! ")));

    lxtest::WriteFile(P("locked.txt"), "x");
    QFile::setPermissions(P("locked.txt"), QFileDevice::Permissions());
    if (::geteuid() != 0) {  // root reads anything
        QVERIFY(!_zip::CompressFiles({P("locked.txt")}, P("l.zip")));
        QVERIFY(log.hasExact(P("locked.txt") + QStringLiteral(" can not open! ")));
    }
    lxtest::WriteFile(P("afile"), "x");
    QVERIFY(!_zip::CompressFiles({P("locked.txt")}, P("afile/under/a/file.zip")));
    QVERIFY(log.contains(QStringLiteral("unable to write:") + P("afile/under/a/file.zip")));

    QVERIFY(!_zip::ExtractDir(P("nothing.zip"), P("dest")));
    QVERIFY(log.hasExact(P("nothing.zip") + QStringLiteral(" not found! ")));
    CraftArchive(P("ok.zip"), {{"a.txt", "a"}});
    QVERIFY(!_zip::ExtractDir(P("ok.zip"), P("afile")));
    QVERIFY(log.hasExact(P("afile") + QStringLiteral(" is not a folder! ")));
    QVERIFY(!_zip::ExtractDir(P("ok.zip"), P("afile/sub")));
    QVERIFY(log.hasExact(QStringLiteral("Cannot create directory: ") + P("afile/sub") + QStringLiteral(" ")));
}

void TestZip::refusesArchivesThatLeaveTheDestination_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("asLink");
    QTest::newRow("climbs out") << "a/../../escaped.txt" << false;
    QTest::newRow("parent") << "../escaped.txt" << false;
    QTest::newRow("absolute") << "/tmp/lx-zip-escaped.txt" << false;
    QTest::newRow("backslashes") << "..\\escaped.txt" << false;
    QTest::newRow("drive") << "C:/escaped.txt" << false;
    QTest::newRow("symbolic link") << "innocent" << true;
}

void TestZip::refusesArchivesThatLeaveTheDestination() {
    QFETCH(QString, entry);
    QFETCH(bool, asLink);
    // A good entry first: nothing at all may be written when any entry is bad.
    const QString zip = asLink ? CraftArchive(P("bad.zip"), {{"good.txt", "g"}}, entry, QStringLiteral("/etc"))
                               : CraftArchive(P("bad.zip"), {{"good.txt", "g"}, {entry, "evil"}});
    lxtest::LogCapture log;
    QVERIFY(!_zip::ExtractDir(zip, P("dest/inner")));
    QVERIFY(log.contains(QStringLiteral("refused")));
    QCOMPARE(Tree(P("dest/inner")), QStringList());
    QVERIFY(!QFileInfo::exists(P("dest/escaped.txt")));
    QVERIFY(!QFileInfo::exists(P("escaped.txt")));
    QVERIFY(!QFileInfo::exists(QStringLiteral("/tmp/lx-zip-escaped.txt")));
}

void TestZip::plantedLinkOnDiskIsNotFollowed() {
    // The destination already holds a link to a folder outside it; an entry under that link must
    // not land outside.
    QDir().mkpath(P("outside"));
    QDir().mkpath(P("dest"));
    QVERIFY(QFile::link(P("outside"), P("dest/link")));
    CraftArchive(P("planted.zip"), {{"link/payload.txt", "evil"}});
    QVERIFY(!_zip::ExtractDir(P("planted.zip"), P("dest")));
    QVERIFY(!QFileInfo::exists(P("outside/payload.txt")));

    // A link to a file is replaced, not written through.
    lxtest::WriteFile(P("outside/target.txt"), "keep");
    QVERIFY(QFile::link(P("outside/target.txt"), P("dest/file.txt")));
    CraftArchive(P("over.zip"), {{"file.txt", "new"}});
    QVERIFY(_zip::ExtractDir(P("over.zip"), P("dest")));
    QCOMPARE(Read(P("outside/target.txt")), QByteArray("keep"));
    QCOMPARE(Read(P("dest/file.txt")), QByteArray("new"));
    QVERIFY(!QFileInfo(P("dest/file.txt")).isSymLink());
}

void TestZip::corruptArchivesAndFailedWritesFail() {
    lxtest::WriteFile(P("src/big.txt"), QByteArray("0123456789").repeated(5000));
    QVERIFY(_zip::CompressDir(P("src"), P("good.zip")));
    QByteArray bytes = Read(P("good.zip"));
    lxtest::WriteFile(P("truncated.zip"), bytes.left(bytes.size() / 2));
    QVERIFY(!_zip::ExtractDir(P("truncated.zip"), P("t")));
    lxtest::WriteFile(P("garbage.zip"), QByteArray(4096, 'g'));
    QVERIFY(!_zip::ExtractDir(P("garbage.zip"), P("g")));
    // Damage the compressed data in the middle but keep the directory intact.
    QByteArray damaged = bytes;
    for (int i = 120; i < 400; ++i)
        damaged[i] = char(0xA5);
    lxtest::WriteFile(P("damaged.zip"), damaged);
    QVERIFY(!_zip::ExtractDir(P("damaged.zip"), P("d")));

    // An existing folder where a file must go makes the write fail, and the call says so.
    QDir().mkpath(P("w/src/big.txt"));
    QVERIFY(!_zip::ExtractDir(P("good.zip"), P("w")));
}

void TestZip::tooLargeFilesAreRefused() {
    // A sparse file past the format's limit costs no disk and is refused before being read.
    QFile f(P("huge.bin"));
    QVERIFY(f.open(QIODevice::WriteOnly));
    QVERIFY(f.resize(_zip::kMaxZipBytes + 1));
    f.close();
    lxtest::WriteFile(P("small.txt"), "s");
    lxtest::LogCapture log;
    QVERIFY(!_zip::CompressFiles({P("small.txt"), P("huge.bin")}, P("h.zip")));
    QVERIFY(log.contains(QStringLiteral("too large for a zip archive")));
    QCOMPARE(Entries(P("h.zip")), QStringList{"small.txt"});
}

QTEST_GUILESS_MAIN(TestZip)
#include "tst_zip.moc"
