// Process environment: device id, language, server time, stable hashes, settings files.

#include <LxCore/Environment.h>
#include <LxCore/IniWrapper.h>
#include <LxCore/ProductPath.h>
#include <LxCore/StrConv.h>
#include <LxCore/TimeDate.h>

#include <QtTest>

#include "LxTestSupport.h"

class TestEnvironment : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void environmentAndLanguage();
    void serverTimeFollowsOffset();
    void hashIsStableAndEncodingAware();
    void iniWrapperAndAppSettingsPersist();
};

void TestEnvironment::environmentAndLanguage() {
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

void TestEnvironment::serverTimeFollowsOffset() {
    const int64_t local = QDateTime::currentMSecsSinceEpoch();
    core::time_date::SetSvrTimeOffsetMillis(3600 * 1000);
    const int64_t svr = core::time_date::GetSvrTimeMillis();
    QVERIFY(svr - local >= 3600 * 1000 && svr - local < 3600 * 1000 + 1000);
    core::time_date::SyncSvrTimeMillis(local - 5000);
    QVERIFY(qAbs(core::time_date::GetSvrTimeMillis() - (local - 5000)) < 1000);
}

void TestEnvironment::hashIsStableAndEncodingAware() {
    // Stored hashes must survive releases: these values are XXH3-64 with seed 0.
    QCOMPARE(core::str_conv::HashStrToUInt64(std::string()), uint64_t(0x2D06800538D394C2ULL));
    const uint64_t url = core::str_conv::HashStrToUInt64(std::string("https://img.example.com/a.png"));
    QCOMPARE(core::str_conv::HashStrToUInt64(QStringLiteral("https://img.example.com/a.png")), url);
    QCOMPARE(core::str_conv::HashStrToUInt64(QStringLiteral("图片")),
             core::str_conv::HashStrToUInt64(std::string("\xe5\x9b\xbe\xe7\x89\x87")));
    QVERIFY(core::str_conv::HashStrToUInt64(std::string("https://img.example.com/b.png")) != url);
}

void TestEnvironment::iniWrapperAndAppSettingsPersist() {
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

QTEST_GUILESS_MAIN(TestEnvironment)
#include "tst_Environment.moc"
