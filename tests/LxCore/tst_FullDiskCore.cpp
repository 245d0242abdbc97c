// The core runtime's writers on a disk that fills up: the log file, settings and whole-file writes.
// Each case runs on a small tmpfs mounted for it (skipped where mounting is not allowed).

#include <LxCore/FileSystem.h>
#include <LxCore/FrameWork.h>
#include <LxCore/IniWrapper.h>
#include <LxCore/LxLog.h>
#include <LxCore/ProductPath.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

#include "ImageFixtures.h"  // ReadAll
#include "LxTestSupport.h"
#include "SmallDisk.h"

namespace {

// Every name in a folder, the disk's filler excepted.
QStringList Names(const QString& dir) {
    return QDir(dir)
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)
        .filter(QRegularExpression(QStringLiteral("^(?!\\.filler$)")));
}

}  // namespace

class TestFullDiskCore : public QObject {
    Q_OBJECT

    std::unique_ptr<lxtest::SmallDisk> m_pDisk;

private Q_SLOTS:
    void init() { m_pDisk = std::make_unique<lxtest::SmallDisk>(); }
    void cleanup() {
        core::product_path::SetRootDir(QString());
        LX_LOG_INFO("LxTest", "log file back off the small disk");  // closes the file on it
        m_pDisk.reset();
        lxtest::ResetGlobals();
    }

    void logFileSurvivesAFullDiskAndResumes() {
        LX_REQUIRE_SMALL_DISK(*m_pDisk);
        core::product_path::SetRootDir(m_pDisk->path());
        const QString logPath = FrameWork::GetLogFilePath();
        LX_LOG_INFO("LxTest", "written before the disk filled");
        QVERIFY(lxtest::ReadAll(logPath).contains("written before the disk filled"));

        QVERIFY(m_pDisk->fill());
        lxtest::LogCapture capture;
        // Longer than what is left of the file's last page, so some record is cut short by the disk.
        const std::string padding(300, 'p');
        const int kRecords = 60;
        for (int i = 0; i < kRecords; ++i) {
            LX_LOG_INFO("LxTest", "while full {} {}", i, padding);
            if (i == kRecords / 2)
                QTest::qWait(700);  // longer than the file's retry interval: the file is tried again
        }

        // The other outputs got every record, and the failure was told once, not once per record or
        // per retry.
        int fullRecords = 0;
        int failureLines = 0;
        for (const FrameWork::LogContext& ctx : capture.records()) {
            fullRecords += ctx.strText.startsWith(QStringLiteral("while full ")) ? 1 : 0;
            if (ctx.strText.contains(QStringLiteral("cannot be written"))) {
                ++failureLines;
                QCOMPARE(ctx.strModule, std::string("LxCore"));
                QCOMPARE(ctx.i32Level, int(FrameWork::kLogError));
                QVERIFY2(ctx.strText.contains(logPath) && ctx.strText.contains(QStringLiteral("No space left")),
                         qPrintable(ctx.strText));
            }
        }
        QCOMPARE(fullRecords, kRecords);
        QCOMPARE(failureLines, 1);

        // The space comes back: a later record reaches the file, after a line saying what was missed.
        m_pDisk->release();
        int after = 0;
        QTRY_VERIFY_WITH_TIMEOUT((LX_LOG_INFO("LxTest", "after the space returned {}", after++),
                                  lxtest::ReadAll(logPath).contains("after the space returned")),
                                 3000);
        const QString content = QString::fromUtf8(lxtest::ReadAll(logPath));
        QVERIFY(content.contains(
            QRegularExpression(QStringLiteral("is written again; [1-9][0-9]* records did not reach it"))));
        // Only whole records: a record the disk cut short was taken out again, not left to run into the
        // next one.
        QVERIFY(content.endsWith(QLatin1Char('\n')));
        const QStringList lines = content.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        int fullInFile = 0;
        for (const QString& line : lines) {
            if (line.contains(QStringLiteral("while full "))) {
                ++fullInFile;
                QVERIFY2(line.endsWith(QString::fromStdString(padding)), qPrintable(line));
            }
        }
        QVERIFY(fullInFile < kRecords);
    }

    void atomicWritesKeepThePreviousFile_data() {
        QTest::addColumn<bool>("settings");  // CIniWrapper, else core::fs::WriteFile
        QTest::addColumn<int>("size");       // of the value written on the full disk
        // Small enough to sit in a write buffer until the file is closed, and larger than one.
        QTest::newRow("settings, small value") << true << 40;
        QTest::newRow("settings, large value") << true << 100000;
        QTest::newRow("file, small") << false << 40;
        QTest::newRow("file, large") << false << 100000;
    }

    void atomicWritesKeepThePreviousFile() {
        QFETCH(bool, settings);
        QFETCH(int, size);
        LX_REQUIRE_SMALL_DISK(*m_pDisk);
        const QString dir = m_pDisk->filePath(QStringLiteral("settings"));
        const QString path = dir + (settings ? QStringLiteral("/settings.ini") : QStringLiteral("/words.dat"));
        auto write = [&](const QString& value) {
            return settings ? core::CIniWrapper(path).SetValue(QStringLiteral("StdOutDialog"),
                                                               QStringLiteral("Geometry"), value)
                            : core::fs::WriteFile(path, value.toUtf8());
        };
        QVERIFY(write(QStringLiteral("previous")));
        const QByteArray before = lxtest::ReadAll(path);
        QVERIFY(!before.isEmpty());

        QVERIFY(m_pDisk->fill());
        lxtest::LogCapture capture;
        const QString refused(size, QLatin1Char('n'));
        QVERIFY(!write(refused));
        QVERIFY2(capture.contains(settings ? QStringLiteral("cannot write setting StdOutDialog/Geometry to ") + path
                                           : QStringLiteral("cannot write ") + path),
                 qPrintable(capture.texts().join(QLatin1Char('\n'))));
        QCOMPARE(lxtest::ReadAll(path), before);
        QCOMPARE(Names(dir), QStringList{QFileInfo(path).fileName()});  // no temporary file left behind

        if (settings) {
            // The refused value is not read back, here or by a fresh reader, nor written later with
            // another change once there is room again.
            core::CIniWrapper ini(path);
            QCOMPARE(ini.GetString(QStringLiteral("StdOutDialog"), QStringLiteral("Geometry")),
                     QStringLiteral("previous"));
            m_pDisk->release();
            QVERIFY(ini.SetValue(QStringLiteral("StdOutDialog"), QStringLiteral("ScreenIndex"), 1));
            QCOMPARE(core::CIniWrapper(path).GetString(QStringLiteral("StdOutDialog"), QStringLiteral("Geometry")),
                     QStringLiteral("previous"));
            QCOMPARE(core::CIniWrapper(path).GetInt(QStringLiteral("StdOutDialog"), QStringLiteral("ScreenIndex")), 1);
        }
    }
};

QTEST_MAIN(TestFullDiskCore)
#include "tst_FullDiskCore.moc"
