// Logging, soft assertions and IO counters of the core runtime, and the process environment:
// device id, language, server time, stable hashes, settings files.

#include <LxCore/Environment.h>
#include <LxCore/FileSystem.h>
#include <LxCore/FrameWork.h>
#include <LxCore/IniWrapper.h>
#include <LxCore/ProductPath.h>
#include <LxCore/StrConv.h>
#include <LxCore/TimeDate.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <QtTest>

#include "LxTestSupport.h"

namespace {
QStringList g_hostMessages;
void HostHandler(QtMsgType, const QMessageLogContext&, const QString& msg) { g_hostMessages << msg; }
}  // namespace

class TestFrameWork : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    void logRecordsReachFileHookAndStatistics() {
        lxtest::TempProductRoot root;
        lxtest::LogCapture capture;
        LX_LOG_INFO("LxTest", "hello {} {}", QStringLiteral("世界"), 42);
        LX_LOG_INFO("LxTest", "missing argument {} {}", 1);  // a bad pattern never throws
        g_hostMessages.clear();
        const QtMessageHandler previous = qInstallMessageHandler(HostHandler);
        FrameWork::InstallQtMessageHandler();
        FrameWork::InstallQtMessageHandler();  // twice: it must not pass messages on to itself
        qWarning("a Qt warning %d", 7);
        qInstallMessageHandler(previous);
        FrameWork::InstallQtMessageHandler();  // later messages chain to the test runner's handler again
        qInstallMessageHandler(previous);
        // The handler that was there before the kit's still receives every message.
        QCOMPARE(g_hostMessages, QStringList{QStringLiteral("a Qt warning 7")});

        const auto records = capture.records();
        QCOMPARE(int(records.size()), 3);
        QCOMPARE(records[0].strText, QStringLiteral("hello 世界 42"));
        QCOMPARE(records[0].strModule, std::string("LxTest"));
        QCOMPARE(records[0].i32Level, int(FrameWork::kLogInfo));
        QCOMPARE(records[0].strFile, std::string("tests/LxCore/tst_FrameWork.cpp"));
        QVERIFY(records[0].bMainThread);
        QVERIFY(records[1].strText.startsWith(QStringLiteral("<bad log format>")));
        QCOMPARE(records[2].strModule, std::string("#Qt#"));  // Qt's own messages arrive as category Qt
        QCOMPARE(records[2].i32Level, int(FrameWork::kLogQt));
        QCOMPARE(records[2].strText, QStringLiteral("a Qt warning 7"));

        QFile f(FrameWork::GetLogFilePath());
        QVERIFY(f.fileName().startsWith(root.path() + QStringLiteral("/log/")));
        QVERIFY(f.open(QIODevice::ReadOnly));
        const QString content = QString::fromUtf8(f.readAll());
        QVERIFY(content.contains(QStringLiteral("[INFO] [LxTest]")));
        QVERIFY(content.contains(QStringLiteral("hello 世界 42")));
    }

    void statisticsCountPerCallSiteLevelAndModule() {
        lxtest::TempProductRoot root;
        FrameWork::ResetLogStatistics();
        for (int i = 0; i < 3; ++i)
            LX_LOG_WARN("ModA", "warn {}", i);
        const int warnLine = __LINE__ - 1;
        LX_LOG_ERROR("ModB", "error");

        const FrameWork::LogStatisticsContext stats = FrameWork::GetLogStatistics();
        QCOMPARE(stats.u64Total, uint64_t(4));
        QCOMPARE(stats.mapCountPerLevel.at(FrameWork::kLogWarning), uint64_t(3));
        QCOMPARE(stats.mapCountPerLevel.at(FrameWork::kLogError), uint64_t(1));
        QCOMPARE(stats.mapCountPerModule.at("ModA"), uint64_t(3));
        QCOMPARE(stats.mapCountPerModule.at("ModB"), uint64_t(1));
        QCOMPARE(int(stats.vecCallSites.size()), 2);
        bool found = false;
        for (const auto& site : stats.vecCallSites)
            if (site.i32Line == warnLine) {
                found = true;
                QCOMPARE(site.u64Count, uint64_t(3));
                QCOMPARE(site.strModule, std::string("ModA"));
                QCOMPARE(site.strFunction, std::string("statisticsCountPerCallSiteLevelAndModule"));
            }
        QVERIFY(found);
    }

    void logFileRotatesAtItsSizeBound() {
        lxtest::TempProductRoot root;
        FrameWork::SetLogFileSizeLimit(4096);
        const QString line(200, QLatin1Char('x'));
        for (int i = 0; i < 100; ++i)
            LX_LOG_INFO("LxTest", "{} {}", i, line);

        const QString path = FrameWork::GetLogFilePath();
        QVERIFY(QFileInfo::exists(path + QStringLiteral(".1")));
        QVERIFY(QFileInfo::exists(path + QStringLiteral(".3")));
        QVERIFY(!QFileInfo::exists(path + QStringLiteral(".4")));  // only three old files are kept
        QVERIFY(QFileInfo(path).size() < 4096 + 400);
        // The newest record is in the current file.
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QVERIFY(f.readAll().contains("99 xxx"));
    }

    void recordsFromOtherThreadsReachTheHook() {
        lxtest::LogCapture capture;
        QVector<QThread*> threads;
        for (int t = 0; t < 4; ++t)
            threads << QThread::create([t] {
                for (int i = 0; i < 50; ++i)
                    LX_LOG_DEBUG("LxTest", "thread {} record {}", t, i);
            });
        for (QThread* th : threads)
            th->start();
        for (QThread* th : threads) {
            QVERIFY(th->wait(10000));
            delete th;
        }
        const auto records = capture.records();
        QCOMPARE(int(records.size()), 200);
        for (const auto& r : records)
            QVERIFY(!r.bMainThread);
    }

    void softAssertionsAreRecordedAndNeverAbort() {
        lxtest::LogCapture capture;
        {
            lxtest::AssertRecorder rec;
            int* p = nullptr;
            const int line = __LINE__ + 1;
            QVERIFY(!LXUIKIT_ASSERT(p != nullptr));
            QVERIFY(LXUIKIT_ASSERT(1 + 1 == 2));
            QCOMPARE(rec.count(), 1);
            const auto a = rec.asserts().front();
            QCOMPARE(a.strModule, std::string("LxUIKit"));
            QCOMPARE(a.strFile, std::string("tests/LxCore/tst_FrameWork"));  // extension dropped
            QCOMPARE(a.strExpression, std::string("p != nullptr"));
            QCOMPARE(a.i32Line, line);
        }
        QVERIFY(capture.contains(QStringLiteral("ASSERT FAILED: p != nullptr")));
        // Without a recorder the assertion is only logged: the process goes on.
        QVERIFY(!LX_ASSERT("LxTest", false));
    }

    void mainThreadAssertionFiresOnlyOffTheGuiThread() {
        lxtest::AssertRecorder rec;
        QVERIFY(LX_ASSERT_MAIN_THREAD("LxTest"));
        bool onWorker = true;
        QThread* th = QThread::create([&] { onWorker = LX_ASSERT_MAIN_THREAD("LxTest"); });
        th->start();
        QVERIFY(th->wait(5000));
        delete th;
        QVERIFY(!onWorker);
        QCOMPARE(rec.count(), 1);
        QCOMPARE(rec.asserts().front().strExpression, std::string("InMainThread"));
    }

    void ioCountersFollowFileHelpers() {
        lxtest::TempProductRoot root;
        const QString path = root.path() + QStringLiteral("/io/data.bin");
        QVERIFY(core::fs::WriteFile(path, QByteArray(1000, 'a')));
        QVERIFY(core::fs::AppendFile(path, QByteArray(24, 'b')));
        QByteArray back;
        QVERIFY(core::fs::ReadFile(path, back));
        QCOMPARE(back.size(), 1024);
        QVERIFY(!core::fs::ReadFile(path + QStringLiteral(".missing"), back));

        const auto io = FrameWork::GetIOStaticstic();
        const FrameWork::IOStatistic s = io.at(path);
        QCOMPARE(s.u64WriteCount, uint64_t(2));
        QCOMPARE(s.u64WriteBytes, uint64_t(1024));
        QCOMPARE(s.u64ReadCount, uint64_t(1));
        QCOMPARE(s.u64ReadBytes, uint64_t(1024));
        QVERIFY(io.find(path + QStringLiteral(".missing")) == io.end());
    }

    void environmentAndLanguage() {
        const QString id = core::environment::GetDeviceId();
        QCOMPARE(id.size(), 16);
        QCOMPARE(core::environment::GetDeviceId(), id);
        QCOMPARE(core::environment::GetClientType(), 1);

        QSignalSpy spy(core::lang::Notifier::instance(), &core::lang::Notifier::languageChanged);
        core::lang::SetLanguageId(core::lang::kLangZhCN);
        QCOMPARE(core::environment::GetServerLanguage(), QStringLiteral("zh-CN"));
        const int before = spy.count();
        core::lang::SetLanguageId(core::lang::kLangEnUS);
        core::lang::SetLanguageId(core::lang::kLangEnUS);  // no change, no signal
        QCOMPARE(spy.count(), before + 1);
        QCOMPARE(core::lang::GetLanguageCode(), QStringLiteral("en_US"));
        QCOMPARE(core::environment::GetServerLanguage(), QStringLiteral("en-US"));
        core::lang::SetLanguageId(99);  // unknown ids fall back to Chinese
        QCOMPARE(core::lang::GetLanguageId(), int(core::lang::kLangZhCN));
    }

    void serverTimeFollowsOffset() {
        const int64_t local = QDateTime::currentMSecsSinceEpoch();
        core::time_date::SetSvrTimeOffsetMillis(3600 * 1000);
        const int64_t svr = core::time_date::GetSvrTimeMillis();
        QVERIFY(svr - local >= 3600 * 1000 && svr - local < 3600 * 1000 + 1000);
        core::time_date::SyncSvrTimeMillis(local - 5000);
        QVERIFY(qAbs(core::time_date::GetSvrTimeMillis() - (local - 5000)) < 1000);
    }

    void hashIsStableAndEncodingAware() {
        // Stored hashes must survive releases: these values are XXH3-64 with seed 0.
        QCOMPARE(core::str_conv::HashStrToUInt64(std::string()), uint64_t(0x2D06800538D394C2ULL));
        const uint64_t url = core::str_conv::HashStrToUInt64(std::string("https://img.example.com/a.png"));
        QCOMPARE(core::str_conv::HashStrToUInt64(QStringLiteral("https://img.example.com/a.png")), url);
        QCOMPARE(core::str_conv::HashStrToUInt64(QStringLiteral("图片")),
                 core::str_conv::HashStrToUInt64(std::string("\xe5\x9b\xbe\xe7\x89\x87")));
        QVERIFY(core::str_conv::HashStrToUInt64(std::string("https://img.example.com/b.png")) != url);
    }

    void iniWrapperAndAppSettingsPersist() {
        lxtest::TempProductRoot root;
        const QString path = root.path() + QStringLiteral("/t.ini");
        {
            core::CIniWrapper ini(path);
            QVERIFY(ini.SetValue(QStringLiteral("StdOutDialog"), QStringLiteral("ScreenIndex"), 2));
            QVERIFY(ini.SetValue(QStringLiteral("StdOutDialog"), QStringLiteral("Flag"), QStringLiteral("yes")));
            QVERIFY(ini.SetValue(QStringLiteral("StdOutDialog"), QStringLiteral("Junk"), QStringLiteral("maybe")));
        }
        core::CIniWrapper again(path);
        QCOMPARE(again.GetInt(QStringLiteral("StdOutDialog"), QStringLiteral("ScreenIndex")), 2);
        QVERIFY(again.GetBool(QStringLiteral("StdOutDialog"), QStringLiteral("Flag")));
        QVERIFY(again.GetBool(QStringLiteral("StdOutDialog"), QStringLiteral("Junk"), true));  // unparsable: default
        QCOMPARE(again.GetInt(QStringLiteral("StdOutDialog"), QStringLiteral("Junk"), -1), -1);
        QVERIFY(!again.HasKey(QStringLiteral("Other"), QStringLiteral("ScreenIndex")));

        QVERIFY(!core::app_setting::GetBool(QStringLiteral("dev_auto_open_std_out")));
        QVERIFY(core::app_setting::SetBool(QStringLiteral("dev_auto_open_std_out"), true));
        QVERIFY(core::app_setting::GetBool(QStringLiteral("dev_auto_open_std_out")));
        QVERIFY(QFile::exists(core::product_path::GetSettingsFile()));
    }
};

QTEST_GUILESS_MAIN(TestFrameWork)
#include "tst_FrameWork.moc"
