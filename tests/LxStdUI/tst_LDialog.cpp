// The standard dialog and the localised words it and the kit show.

#include <LxCore/Environment.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/MultiLang.h>

#include <QPushButton>
#include <QtTest>

#include "LxTestSupport.h"

class TestLDialog : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void dialogTextsAndCentring();
    void localisedWordsFollowTheLanguage();
};

void TestLDialog::dialogTextsAndCentring() {
    QWidget host;
    host.setGeometry(100, 100, 600, 400);
    host.show();
    auto* dlg = new LDialog(&host);
    dlg->setLxStyle(2);
    dlg->setTitle(QStringLiteral("Title"));
    dlg->setContent(QStringLiteral("Body text"));
    dlg->setConfirmText(QStringLiteral("Got it"));
    QSignalSpy confirmed(dlg, &LDialog::confirmed);
    dlg->showCenter(&host, 360);
    QVERIFY(dlg->isVisible());
    QCOMPARE(dlg->width(), 360);
    const QPoint hostCenter = host.geometry().center();
    QVERIFY(qAbs(dlg->geometry().center().x() - hostCenter.x()) <= 3);
    QVERIFY(qAbs(dlg->geometry().center().y() - hostCenter.y()) <= 3);
    auto* button = dlg->findChild<QPushButton*>(QStringLiteral("LDialogConfirm"));
    QVERIFY(button);
    QCOMPARE(button->text(), QStringLiteral("Got it"));
    button->click();
    QCOMPARE(confirmed.count(), 1);
    QVERIFY(!dlg->isVisible());
}

void TestLDialog::localisedWordsFollowTheLanguage() {
    core::lang::SetLanguageId(core::lang::kLangZhCN);
    QCOMPARE(lxstdui_multi_lang::gui_helper::textTip(), QStringLiteral("提示"));
    QCOMPARE(lxstdui_multi_lang::gui_helper::textIKnow(), QStringLiteral("我知道了"));
    QCOMPARE(lxstdui_multi_lang::rich_text_data_image::textImage(), QStringLiteral("[图片]"));
    core::lang::SetLanguageId(core::lang::kLangEnUS);
    QCOMPARE(lxstdui_multi_lang::gui_helper::textTip(), QStringLiteral("Tip"));
    QCOMPARE(lxstdui_multi_lang::gui_helper::textPageLoadFailed(), QStringLiteral("The page failed to load"));
    core::lang::SetLanguageId(core::lang::kLangZhCN);
    QCOMPARE(lxstdui_multi_lang::gui_helper::textPageLoadFailed(), QStringLiteral("页面加载失败"));
}

QTEST_MAIN(TestLDialog)
#include "tst_LDialog.moc"
