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

    void toastTextAndColourByState_data() {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("colour");
        QTest::newRow("success") << 1 << QStringLiteral("✔  saved") << QStringLiteral("#28a745");
        QTest::newRow("failure") << 0 << QStringLiteral("❌  saved") << QStringLiteral("#dc3545");
        QTest::newRow("neutral") << 2 << QStringLiteral("saved") << QStringLiteral("#333333");
    }

    void toastTextAndColourByState() {
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

    // A toast of up to a second appears a little below the middle of the screen; a longer one slides
    // up from the bottom edge to 50 px above it. Neither goes before its time, however slow the
    // machine (a coarse timer, used from two seconds on, may fire up to 5% early).
    void toastPlacementAndLifetime_data() {
        QTest::addColumn<int>("durationMs");
        QTest::addColumn<int>("earliestMs");
        QTest::newRow("short, below the middle") << 800 << 790;
        QTest::newRow("long, slides up") << 3000 << 2850;
    }

    void toastPlacementAndLifetime() {
        QFETCH(int, durationMs);
        QFETCH(int, earliestMs);
        const QRect desk = QGuiApplication::primaryScreen()->geometry();
        QElapsedTimer timer;
        timer.start();
        gui::ShowSimpleToast(QStringLiteral("toast"), TriBool::Neutral, durationMs);
        QPointer<QLabel> toast = Toasts().value(0);
        QVERIFY(toast);
        const int x = desk.x() + (desk.width() - toast->width()) / 2;
        auto* anim = toast->findChild<QPropertyAnimation*>();
        if (durationMs <= 1000) {
            QVERIFY(!anim);
            QCOMPARE(toast->pos(), QPoint(x, desk.y() + qRound((desk.height() - toast->height()) / 1.8)));
        } else {
            QVERIFY(anim);
            const QRect start = anim->startValue().toRect();
            QCOMPARE(start, QRect(x, desk.y() + desk.height(), toast->width(), toast->height()));
            QCOMPARE(anim->endValue().toRect(), start.translated(0, -toast->height() - 50));
            QTRY_VERIFY(toast->findChild<QPropertyAnimation*>() == nullptr);  // deleted when stopped
            QCOMPARE(toast->geometry(), start.translated(0, -toast->height() - 50));
        }
        QTest::qWait(durationMs / 2);
        QVERIFY(toast || timer.elapsed() >= earliestMs);
        QTRY_VERIFY_WITH_TIMEOUT(toast.isNull(), durationMs);
        QVERIFY(timer.elapsed() >= earliestMs);
    }

    void coreInitParamCarriesTheKitFunctions() {
        lxtest::TempProductRoot root;
        const core::CoreInitParam param = gui::GetCoreInitParamVeryFirst();
        QVERIFY(param.fnExtractDir && param.fnCompressDir && param.fnCompressFiles && param.fnLoadSchemeUrlFailed);
        core::InitCore(param);

        // The core can now pack and unpack without linking the kit.
        lxtest::WriteFile(root.path() + QStringLiteral("/src/a.txt"), "A");
        lxtest::WriteFile(root.path() + QStringLiteral("/one.txt"), "1");
        QVERIFY(
            core::archive::CompressDir(root.path() + QStringLiteral("/src"), root.path() + QStringLiteral("/d.zip")));
        QVERIFY(core::archive::CompressFiles({root.path() + QStringLiteral("/one.txt")},
                                             root.path() + QStringLiteral("/f.zip")));
        QVERIFY(
            core::archive::ExtractDir(root.path() + QStringLiteral("/d.zip"), root.path() + QStringLiteral("/out")));
        QVERIFY(
            core::archive::ExtractDir(root.path() + QStringLiteral("/f.zip"), root.path() + QStringLiteral("/out")));
        QVERIFY(QFile::exists(root.path() + QStringLiteral("/out/src/a.txt")));
        QVERIFY(QFile::exists(root.path() + QStringLiteral("/out/one.txt")));
    }

    void schemeFailureShowsTipDialogAndLogs() {
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
};

QTEST_MAIN(TestGuiHelper)
#include "tst_GuiHelper.moc"
