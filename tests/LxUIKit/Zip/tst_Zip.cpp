// Zip helpers: round trips, naming, refused archives and failures with their log texts.

#include <LxUIKit/Zip/LxZip.h>
#include <LxUIKit/Zip/ZipQtWriter_p.h>

#include <QtGui/private/qzipreader_p.h>
#include <QtGui/private/qzipwriter_p.h>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

#include "ImageFixtures.h"  // ReadAll
#include "LxTestSupport.h"
#include "ZipFixtures.h"

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

int Run(const QString& program, const QStringList& args, const QString& cwd, const QString& stdoutFile = QString()) {
    QProcess p;
    p.setWorkingDirectory(cwd);
    if (!stdoutFile.isEmpty())
        p.setStandardOutputFile(stdoutFile);
    p.start(program, args);
    if (!p.waitForFinished(60000))
        return -1;
    if (p.exitCode() != 0)
        qWarning() << program << p.readAllStandardError();
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

// Data that does not compress.
QByteArray Noise(int size) {
    QByteArray noise(size, '\0');
    quint32 x = 1;
    for (char& c : noise)
        c = char((x = x * 1103515245u + 12345u) >> 24);
    return noise;
}

// A small tree with what archivers disagree on: an empty folder, an executable, a non-ASCII name,
// a hidden file, and data that does not compress.
void MakeToolTree(const QString& root) {
    lxtest::WriteFile(root + QStringLiteral("/a.txt"), QByteArray("alpha\n").repeated(1000));
    lxtest::WriteFile(root + QStringLiteral("/.hidden"), "h");
    lxtest::WriteFile(root + QStringLiteral("/sub/\u65e5\u5fd7.log"), "utf-8 name");
    lxtest::WriteFile(root + QStringLiteral("/sub/noise.bin"), Noise(50000));
    lxtest::WriteFile(root + QStringLiteral("/run.sh"), "#!/bin/sh\n");
    QFile::setPermissions(root + QStringLiteral("/run.sh"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QDir().mkpath(root + QStringLiteral("/empty"));
}

void CompareTrees(const QString& expected, const QString& actual, bool withModes) {
    QCOMPARE(Tree(actual), Tree(expected));
    for (const QString& rel : Tree(expected)) {
        const QFileInfo e(expected + QLatin1Char('/') + rel);
        const QFileInfo a(actual + QLatin1Char('/') + rel);
        QCOMPARE(a.isDir(), e.isDir());
        if (e.isFile())
            QCOMPARE(lxtest::ReadAll(a.filePath()), lxtest::ReadAll(e.filePath()));
        if (withModes && e.isFile())
            QCOMPARE(bool(a.permissions() & QFile::ExeOwner), bool(e.permissions() & QFile::ExeOwner));
    }
}

}  // namespace

class TestZip : public QObject {
    Q_OBJECT
    QString P(const QString& rel) const { return m_root->path() + QLatin1Char('/') + rel; }
    std::unique_ptr<QTemporaryDir> m_root;

private Q_SLOTS:
    void init() { m_root.reset(new QTemporaryDir); }
    void cleanup() { lxtest::ResetGlobals(); }

    // What the kit packs, the kit and unzip read back whole: hidden files, empty folders, the
    // executable bit and the times; links are left out, whether to files or folders.
    void folderRoundTrip() {
        MakeToolTree(P("tree"));
        lxtest::WriteFile(P("tree/.cfg/inner.txt"), "inner");
        const QDateTime old = QDateTime::fromString(QStringLiteral("2021-03-04T05:06:08"), Qt::ISODate);
        {
            QFile f(P("tree/a.txt"));
            QVERIFY(f.open(QIODevice::ReadWrite));
            QVERIFY(f.setFileTime(old, QFileDevice::FileModificationTime));
        }
        QVERIFY(QFile::link(P("tree/a.txt"), P("tree/link.log")));
        QVERIFY(QFile::link(P("tree/empty"), P("tree/linkdir")));
        QVERIFY(_zip::CompressDir(P("tree"), P("out/k.zip")));
        QVERIFY(QFile::remove(P("tree/link.log")) && QFile::remove(P("tree/linkdir")));
        QVERIFY(_zip::ExtractDir(P("out/k.zip"), P("x")));
        CompareTrees(P("tree"), P("x/tree"), true);
        // Zip times have two-second precision.
        QVERIFY(qAbs(QFileInfo(P("x/tree/a.txt")).lastModified().secsTo(old)) <= 2);
        if (QStandardPaths::findExecutable(QStringLiteral("unzip")).isEmpty())
            QSKIP("unzip is not installed; cannot check the kit's archives with it");
        QCOMPARE(Run(QStringLiteral("unzip"), {"-tq", P("out/k.zip")}, m_root->path()), 0);
        QCOMPARE(Run(QStringLiteral("unzip"), {"-q", P("out/k.zip"), "-d", P("u")}, m_root->path()), 0);
        CompareTrees(P("tree"), P("u/tree"), true);
    }

    void entriesAreNamedFromTheItemsParent() {
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

    void folderPathsAreNormalised_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("throughWriter");
        for (bool w : {false, true}) {
            const char* via = w ? " (writer)" : "";
            QTest::newRow(qPrintable(QStringLiteral("trailing slash%1").arg(via))) << "logs/" << w;
            QTest::newRow(qPrintable(QStringLiteral("two slashes%1").arg(via))) << "logs//" << w;
            QTest::newRow(qPrintable(QStringLiteral("dot%1").arg(via))) << "logs/." << w;
            QTest::newRow(qPrintable(QStringLiteral("dot dot%1").arg(via))) << "logs/sub/.." << w;
            QTest::newRow(qPrintable(QStringLiteral("dot dot in the middle%1").arg(via))) << "other/../logs/./" << w;
        }
    }
    void folderPathsAreNormalised() {
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

    void specialFilesAreSkipped() {
        lxtest::WriteFile(P("logs/a.txt"), "a");
        QCOMPARE(::mkfifo(QFile::encodeName(P("logs/fifo")).constData(), 0600), 0);
        lxtest::LogCapture log;
        QVERIFY(_zip::CompressDir(P("logs"), P("logs.zip")));
        QVERIFY(log.hasExact(P("logs/fifo") + QStringLiteral(" is not a regular file, folder or link; skipped")));
        QCOMPARE(Entries(P("logs.zip")), (QStringList{"logs", "logs/a.txt"}));
        // Given on its own it is skipped the same way, and never opened: a FIFO would block.
        QVERIFY(_zip::CompressFiles({P("logs/fifo"), P("logs/a.txt")}, P("fifo.zip")));
        QCOMPARE(Entries(P("fifo.zip")), QStringList{"a.txt"});
    }

    void failuresLogTheirTexts() {
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
        // A folder where a file must go.
        QDir().mkpath(P("w/a.txt"));
        QVERIFY(!_zip::ExtractDir(P("ok.zip"), P("w")));
        QVERIFY(log.contains(QStringLiteral("cannot write ") + P("w/a.txt")));
    }

    void refusesArchivesThatLeaveTheDestination_data() {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<bool>("asLink");
        QTest::newRow("climbs out") << "a/../../escaped.txt" << false;
        QTest::newRow("parent") << "../escaped.txt" << false;
        QTest::newRow("absolute") << "/tmp/lx-zip-escaped.txt" << false;
        QTest::newRow("backslashes") << "..\\escaped.txt" << false;
        QTest::newRow("drive") << "C:/escaped.txt" << false;
        QTest::newRow("symbolic link") << "innocent" << true;
    }
    void refusesArchivesThatLeaveTheDestination() {
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

    void plantedLinkOnDiskIsNotFollowed() {
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
        QCOMPARE(lxtest::ReadAll(P("outside/target.txt")), QByteArray("keep"));
        QCOMPARE(lxtest::ReadAll(P("dest/file.txt")), QByteArray("new"));
        QVERIFY(!QFileInfo(P("dest/file.txt")).isSymLink());
    }

    void writerOverloadsRefuseTooLargeFiles() {
        // QZipWriter has no Zip64. A sparse file past its limit costs no disk and is refused unread.
        QFile f(P("huge.bin"));
        QVERIFY(f.open(QIODevice::WriteOnly));
        QVERIFY(f.resize(_zip::kMaxZipBytes + 1));
        f.close();
        lxtest::WriteFile(P("small.txt"), "s");
        lxtest::LogCapture log;
        {
            auto writer = QSharedPointer<QZipWriter>::create(P("h.zip"));
            QVERIFY(_zip::compress::CompressFile(writer, P("small.txt"), QString(), m_root->path() + QLatin1Char('/')));
            QVERIFY(!_zip::compress::CompressFile(writer, P("huge.bin"), QString(), m_root->path() + QLatin1Char('/')));
        }
        QVERIFY(log.contains(QStringLiteral("too large for a zip archive")));
        QCOMPARE(Entries(P("h.zip")), QStringList{"small.txt"});
    }

    void hostileArchivesAreRefused_data() {
        using lxtest::RawZipEntry;
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("log");
        QTest::addColumn<QStringList>("tree");  // what the destination holds afterwards

        const RawZipEntry good = lxtest::DeflatedEntry("good.txt", "fine");
        const RawZipEntry text = lxtest::DeflatedEntry("bad.txt", QByteArray("hello zip\n").repeated(100));
        const QByteArray whole = lxtest::RawZip({good, text});
        QTest::newRow("truncated") << whole.left(whole.size() / 2) << "cannot be read as a zip archive"
                                   << QStringList();
        QTest::newRow("garbage") << QByteArray(4096, 'g') << "cannot be read as a zip archive" << QStringList();
        RawZipEntry invalid = text;
        invalid.stored[0] = char(0x07);  // a final deflate block of the reserved type
        QTest::newRow("deflate data damaged")
            << lxtest::RawZip({good, invalid}) << "is corrupt" << QStringList{"good.txt"};
        // The fuzzer's find: about a hundred bytes whose one entry claims 2 GiB of packed data.
        RawZipEntry tiny = lxtest::DeflatedEntry("a.txt", "hello hello hello\n");
        tiny.packed = 0x80000000u;
        QTest::newRow("packed size past the file") << lxtest::RawZip({tiny}) << "the file holds" << QStringList();

        // Bombs: a thousand entries inflating one shared 1 MiB run of zeros; one entry claiming just
        // past the ratio bound; sizes adding up past the absolute bound.
        QList<RawZipEntry> shared{lxtest::DeflatedEntry("k0", QByteArray(1 << 20, '\0'))};
        for (int i = 1; i < 1000; ++i) {
            RawZipEntry e = shared.first();
            e.name = "k" + QByteArray::number(i);
            e.sharesDataOf = 0;
            shared << e;
        }
        QTest::newRow("bomb: shared data") << lxtest::RawZip(shared) << "the file holds" << QStringList();
        // Declared to unpack to one byte past the ratio bound (the declared size leaves the length alone).
        RawZipEntry ratio = shared.first();
        const qint64 ratioBytes = lxtest::RawZip({good, ratio}).size();
        ratio.size = quint32((ratioBytes + 1) * _zip::kMaxExpansionRatio - 4);  // "good" holds the other 4
        QTest::newRow("bomb: expansion ratio") << lxtest::RawZip({good, ratio}) << "times its own" << QStringList();
        QList<RawZipEntry> many{good};
        for (int i = 0; i < 20; ++i) {
            RawZipEntry e = lxtest::DeflatedEntry("m" + QByteArray::number(i), "x");
            e.size = 0xFFFFFFF0u;
            many << e;
        }
        QTest::newRow("bomb: absolute size") << lxtest::RawZip(many) << "allowed" << QStringList();

        RawZipEntry crc = text;
        crc.crc ^= 1;
        QTest::newRow("wrong CRC") << lxtest::RawZip({good, crc}) << "fails its CRC check" << QStringList{"good.txt"};
        RawZipEntry longer = text;
        longer.size -= 10;
        QTest::newRow("longer than declared")
            << lxtest::RawZip({good, longer}) << "is longer than the" << QStringList{"good.txt"};
        RawZipEntry shorter = text;
        shorter.size += 10;
        QTest::newRow("shorter than declared")
            << lxtest::RawZip({good, shorter}) << "is shorter than declared" << QStringList{"good.txt"};
        RawZipEntry encrypted = text;
        encrypted.flags = 1;
        QTest::newRow("encrypted") << lxtest::RawZip({good, encrypted}) << "is encrypted" << QStringList();
        RawZipEntry bzip2 = text;
        bzip2.method = 12;
        QTest::newRow("other method") << lxtest::RawZip({good, bzip2}) << "neither stored nor deflated"
                                      << QStringList();
    }
    void hostileArchivesAreRefused() {
        QFETCH(QByteArray, archive);
        QFETCH(QString, log);
        QFETCH(QStringList, tree);
        // Whatever the headers claim, a refusal costs little.
        constexpr qint64 kMemoryCeiling = 16 << 20;
        constexpr double kCpuCeilingSeconds = 2.0;
        lxtest::WriteFile(P("x.zip"), archive);
        lxtest::LogCapture capture;
        const lxtest::CostMeter cost;
        QVERIFY(!_zip::ExtractDir(P("x.zip"), P("dest")));
        QVERIFY2(capture.contains(log), qPrintable(capture.texts().join(QLatin1Char('\n'))));
        // No file that failed its checks under its final name, and no part file left behind.
        QCOMPARE(Tree(P("dest")), tree);
        QVERIFY2(cost.PeakAboveStartBytes() <= kMemoryCeiling, qPrintable(QString::number(cost.PeakAboveStartBytes())));
        QVERIFY2(cost.CpuSeconds() < kCpuCeilingSeconds, qPrintable(QString::number(cost.CpuSeconds())));
    }

    void largeFilesStreamInBoundedMemory() {
        // 256 MiB (a sparse file: cheap to make) packs and unpacks within 64 MiB of the resident memory
        // at the start, and within a minute of CPU even under sanitizers; held whole it would cost 512 MiB.
        constexpr qint64 kFileBytes = qint64(256) << 20;
        constexpr qint64 kMemoryCeiling = 64 << 20;
        constexpr double kCpuCeilingSeconds = 60.0;
        QDir().mkpath(P("big"));
        QFile f(P("big/zero.bin"));
        QVERIFY(f.open(QIODevice::WriteOnly) && f.resize(kFileBytes));
        f.close();
        const lxtest::CostMeter cost;
        QVERIFY(_zip::CompressDir(P("big"), P("big.zip")));
        QVERIFY(_zip::ExtractDir(P("big.zip"), P("x")));
        QCOMPARE(QFileInfo(P("x/big/zero.bin")).size(), kFileBytes);  // and its CRC checked on the way
        QVERIFY2(cost.PeakAboveStartBytes() <= kMemoryCeiling, qPrintable(QString::number(cost.PeakAboveStartBytes())));
        QVERIFY2(cost.CpuSeconds() < kCpuCeilingSeconds, qPrintable(QString::number(cost.CpuSeconds())));
    }

    // Info-ZIP's archives, plain, Zip64 and streamed to a pipe (sizes in data descriptors).
    void readsWhatOtherToolsWrite_data() {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<bool>("toStdout");
        QTest::newRow("zip") << QStringList{"-qr", "%zip", "tree"} << false;
        QTest::newRow("zip, Zip64") << QStringList{"-qr", "-fz", "%zip", "tree"} << false;
        QTest::newRow("zip, streamed") << QStringList{"-qr", "-", "tree"} << true;
    }
    void readsWhatOtherToolsWrite() {
        QFETCH(QStringList, args);
        QFETCH(bool, toStdout);
        if (QStandardPaths::findExecutable(QStringLiteral("zip")).isEmpty())
            QSKIP("zip is not installed; cannot check its archives");
        MakeToolTree(P("tree"));
        args.replaceInStrings(QStringLiteral("%zip"), P("t.zip"));
        QCOMPARE(Run(QStringLiteral("zip"), args, m_root->path(), toStdout ? P("t.zip") : QString()), 0);
        QVERIFY(_zip::ExtractDir(P("t.zip"), P("x")));
        CompareTrees(P("tree"), P("x/tree"), !toStdout);
    }
};

QTEST_GUILESS_MAIN(TestZip)
#include "tst_Zip.moc"
