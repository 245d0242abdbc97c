// The kit's GUI helpers: toasts (text, colours, placement, slide, lifetime), the core's start-up
// block the kit fills, and the tip dialog shown when a scheme URL fails.

#include <LxCore/CoreInit.h>
#include <LxCore/Environment.h>
#include <LxCore/Scheme.h>
#include <LxStdUI/LDialog.h>
#include <LxUIKit/LxGuiHelper.h>

#include <QApplication>
#include <QLabel>
#include <QPropertyAnimation>
#include <QScreen>
#include <QtTest>

#include "LxTestSupport.h"

namespace {
template <typename T>
QList<T*> TopLevel(bool (*match)(T*)) {
    QList<T*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* t = qobject_cast<T*>(w))
            if (match(t))
                out << t;
    return out;
}
QList<QLabel*> Toasts() {
    return TopLevel<QLabel>([](QLabel* l) { return l->objectName() == QLatin1String("LxSimpleToast"); });
}
QList<LDialog*> OpenDialogs() {
    return TopLevel<LDialog>([](LDialog* d) { return d->isVisible(); });
}
}  // namespace

class TestGuiHelper : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void toastTextAndColourByState_data();
    void toastTextAndColourByState();
    void shortToastSitsBelowTheMiddleAndDies();
    void longToastSlidesUpAndDiesOnTime();
    void coreInitParamCarriesTheKitFunctions();
    void schemeFailureShowsTipDialogAndLogs();
};

void TestGuiHelper::toastTextAndColourByState_data() {
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("colour");
    QTest::newRow("success") << 1 << QStringLiteral("✔  saved") << QStringLiteral("#28a745");
    QTest::newRow("failure") << 0 << QStringLiteral("❌  saved") << QStringLiteral("#dc3545");
    QTest::newRow("neutral") << 2 << QStringLiteral("saved") << QStringLiteral("#333333");
}

void TestGuiHelper::toastTextAndColourByState() {
    QFETCH(int, state);
    QFETCH(QString, text);
    QFETCH(QString, colour);
    gui::ShowSimpleToast(QStringLiteral("saved"), TriBool(state), 300);
    QCOMPARE(Toasts().size(), 1);
    QLabel* toast = Toasts().first();
    QCOMPARE(toast->text(), text);
    QVERIFY(toast->testAttribute(Qt::WA_TransparentForMouseEvents));  // never takes a click
    QVERIFY(toast->styleSheet().startsWith(QStringLiteral("background-color:") + colour +
                                           QStringLiteral("; color:white;")));
    // The title2 token reached the label's font.
    QCOMPARE(toast->font().pixelSize(), 16);
    QVERIFY(toast->font().bold());
    QTRY_VERIFY(Toasts().isEmpty());
}

void TestGuiHelper::shortToastSitsBelowTheMiddleAndDies() {
    const QRect desk = QGuiApplication::primaryScreen()->geometry();
    QElapsedTimer timer;
    timer.start();
    gui::ShowSimpleToast(QStringLiteral("short"), TriBool::Neutral, 800);
    QPointer<QLabel> toast = Toasts().value(0);
    QVERIFY(toast);
    QVERIFY(!toast->findChild<QPropertyAnimation*>());
    QCOMPARE(toast->x(), desk.x() + (desk.width() - toast->width()) / 2);
    QCOMPARE(toast->y(), desk.y() + qRound((desk.height() - toast->height()) / 1.8));
    QTest::qWait(500);
    QVERIFY(toast || timer.elapsed() >= 790);  // not gone before its time, however slow the machine
    QTRY_VERIFY_WITH_TIMEOUT(toast.isNull(), 2000);
    QVERIFY(timer.elapsed() >= 790);
}

void TestGuiHelper::longToastSlidesUpAndDiesOnTime() {
    const QRect desk = QGuiApplication::primaryScreen()->geometry();
    QElapsedTimer timer;
    timer.start();
    gui::ShowSimpleToast(QStringLiteral("long"), TriBool::True, 3000);
    QPointer<QLabel> toast = Toasts().value(0);
    QVERIFY(toast);
    auto* anim = toast->findChild<QPropertyAnimation*>();
    QVERIFY(anim);
    const QRect start = anim->startValue().toRect();
    const QRect end = anim->endValue().toRect();
    QCOMPARE(start.top(), desk.y() + desk.height());
    QCOMPARE(end.top(), desk.y() + desk.height() - toast->height() - 50);
    QCOMPARE(start.size(), toast->size());
    QTRY_VERIFY(toast->findChild<QPropertyAnimation*>() == nullptr);  // deleted when stopped
    QCOMPARE(toast->geometry(), end);
    QTest::qWait(1500);
    QVERIFY(toast || timer.elapsed() >= 2850);
    QTRY_VERIFY_WITH_TIMEOUT(toast.isNull(), 3000);
    QVERIFY(timer.elapsed() >= 2850);  // a coarse timer may fire up to 5% early
}

void TestGuiHelper::coreInitParamCarriesTheKitFunctions() {
    lxtest::TempProductRoot root;
    const core::CoreInitParam param = gui::GetCoreInitParamVeryFirst();
    QVERIFY(param.fnExtractDir && param.fnCompressDir && param.fnCompressFiles && param.fnLoadSchemeUrlFailed);
    core::InitCore(param);

    // The core can now pack and unpack without linking the kit.
    lxtest::WriteFile(root.path() + QStringLiteral("/src/a.txt"), "A");
    lxtest::WriteFile(root.path() + QStringLiteral("/one.txt"), "1");
    QVERIFY(core::archive::CompressDir(root.path() + QStringLiteral("/src"), root.path() + QStringLiteral("/d.zip")));
    QVERIFY(core::archive::CompressFiles({root.path() + QStringLiteral("/one.txt")},
                                         root.path() + QStringLiteral("/f.zip")));
    QVERIFY(core::archive::ExtractDir(root.path() + QStringLiteral("/d.zip"), root.path() + QStringLiteral("/out")));
    QVERIFY(core::archive::ExtractDir(root.path() + QStringLiteral("/f.zip"), root.path() + QStringLiteral("/out")));
    QVERIFY(QFile::exists(root.path() + QStringLiteral("/out/src/a.txt")));
    QVERIFY(QFile::exists(root.path() + QStringLiteral("/out/one.txt")));
}

void TestGuiHelper::schemeFailureShowsTipDialogAndLogs() {
    lxtest::LogCapture capture;
    core::InitCore(gui::GetCoreInitParamVeryFirst());
    QWidget parent;
    parent.setGeometry(50, 50, 500, 400);
    parent.show();
    QVERIFY(!core::scheme::OpenUrl(QStringLiteral("lxunknown://page?id=1"), &parent));

    const QList<LDialog*> dialogs = OpenDialogs();
    QCOMPARE(dialogs.size(), 1);
    LDialog* dlg = dialogs.first();
    QCOMPARE(dlg->lxStyle(), 2);
    QCOMPARE(dlg->title(), QStringLiteral("提示"));
    QCOMPARE(dlg->content(), QStringLiteral("页面加载失败"));
    QCOMPARE(dlg->confirmText(), QStringLiteral("我知道了"));
    QVERIFY(dlg->isModal());
    QVERIFY(dlg->parent() == nullptr);
    QVERIFY(qAbs(dlg->geometry().center().x() - parent.geometry().center().x()) <= 3);
    QVERIFY(capture.hasExact(QStringLiteral("Load scheme url fail!!! url = lxunknown://page?id=1")));

    // A parent that is not a widget centres the dialog with no parent; closing deletes it.
    QPointer<LDialog> first = dlg;
    first->close();
    QTRY_VERIFY(first.isNull());
    QObject notAWidget;
    core::GetCoreInitParam().fnLoadSchemeUrlFailed(QStringLiteral("x://y"), &notAWidget);
    QCOMPARE(OpenDialogs().size(), 1);
    OpenDialogs().first()->close();
}

QTEST_MAIN(TestGuiHelper)
#include "tst_GuiHelper.moc"
