// Toasts (text, colours, placement, slide, lifetime) and the lazy-load container.

#include <LxCore/SafeFunction.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxLazyLoadWidget.h>

#include <QApplication>
#include <QLabel>
#include <QPropertyAnimation>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QtTest>

#include "LxTestSupport.h"

using core::pattern::CLazyLoadWidget;

namespace {
QList<QLabel*> Toasts() {
    QList<QLabel*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("LxSimpleToast"))
            if (auto* l = qobject_cast<QLabel*>(w))
                out << l;
    return out;
}
}  // namespace

class TestToastLazy : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void toastTextAndColourByState_data();
    void toastTextAndColourByState();
    void shortToastSitsBelowTheMiddleAndDies();
    void longToastSlidesUpAndDiesOnTime();
    void lazyCreatesOnFirstShowOnce();
    void lazyPaintModeWaitsForAPaint();
    void lazyNullCreatorAndDeadOwner();
};

void TestToastLazy::toastTextAndColourByState_data() {
    QTest::addColumn<int>("state");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("colour");
    QTest::newRow("success") << 1 << QStringLiteral("✔  saved") << QStringLiteral("#28a745");
    QTest::newRow("failure") << 0 << QStringLiteral("❌  saved") << QStringLiteral("#dc3545");
    QTest::newRow("neutral") << 2 << QStringLiteral("saved") << QStringLiteral("#333333");
}

void TestToastLazy::toastTextAndColourByState() {
    QFETCH(int, state);
    QFETCH(QString, text);
    QFETCH(QString, colour);
    gui::ShowSimpleToast(QStringLiteral("saved"), TriBool(state), 300);
    QCOMPARE(Toasts().size(), 1);
    QLabel* toast = Toasts().first();
    QCOMPARE(toast->text(), text);
    QCOMPARE(toast->alignment(), Qt::Alignment(Qt::AlignCenter));
    QVERIFY(toast->windowFlags() & Qt::ToolTip);
    QVERIFY(toast->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(toast->testAttribute(Qt::WA_TransparentForMouseEvents));
    QVERIFY(toast->styleSheet().startsWith(QStringLiteral("background-color:") + colour +
                                           QStringLiteral("; color:white;")));
    // The title2 token reached the label's font.
    QCOMPARE(toast->font().pixelSize(), 16);
    QVERIFY(toast->font().bold());
    QTRY_VERIFY(Toasts().isEmpty());
}

void TestToastLazy::shortToastSitsBelowTheMiddleAndDies() {
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

void TestToastLazy::longToastSlidesUpAndDiesOnTime() {
    const QRect desk = QGuiApplication::primaryScreen()->geometry();
    QElapsedTimer timer;
    timer.start();
    gui::ShowSimpleToast(QStringLiteral("long"), TriBool::True, 3000);
    QPointer<QLabel> toast = Toasts().value(0);
    QVERIFY(toast);
    auto* anim = toast->findChild<QPropertyAnimation*>();
    QVERIFY(anim);
    QCOMPARE(anim->propertyName(), QByteArray("geometry"));
    QCOMPARE(anim->duration(), 500);
    QCOMPARE(anim->easingCurve().type(), QEasingCurve::OutBack);
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

void TestToastLazy::lazyCreatesOnFirstShowOnce() {
    QWidget host;
    int calls = 0;
    QPointer<QLabel> content;
    auto* lazy = new CLazyLoadWidget(&host, core::CSafeFunction<QWidget*()>(&host, [&]() -> QWidget* {
        ++calls;
        content = new QLabel(QStringLiteral("content"));
        return content;
    }));
    QCOMPARE(lazy->GetCreateMode(), CLazyLoadWidget::CreateOnShow);
    QCOMPARE(calls, 0);
    host.show();
    QCOMPARE(calls, 1);
    QVERIFY(content && content->parentWidget() == lazy);
    auto* layout = qobject_cast<QVBoxLayout*>(lazy->layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(layout->sizeConstraint(), QLayout::SetMinAndMaxSize);
    host.hide();
    host.show();
    lazy->EnsureCreateContent();
    QCOMPARE(calls, 1);
}

void TestToastLazy::lazyPaintModeWaitsForAPaint() {
    // Rows far below the viewport of a scroll area are shown but never painted.
    QScrollArea area;
    area.resize(200, 100);
    auto* list = new QWidget;
    auto* v = new QVBoxLayout(list);
    int created = 0;
    QVector<CLazyLoadWidget*> rows;
    for (int i = 0; i < 40; ++i) {
        auto* row = new CLazyLoadWidget(list, core::CSafeFunction<QWidget*()>([&created]() -> QWidget* {
                                            ++created;
                                            return new QLabel(QStringLiteral("row"));
                                        }));
        row->SetCreateMode(CLazyLoadWidget::CreateOnPaint);
        row->setFixedHeight(30);
        v->addWidget(row);
        rows << row;
    }
    area.setWidget(list);
    area.setWidgetResizable(true);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    QTRY_VERIFY(created > 0);
    QCoreApplication::processEvents();
    const int visibleRows = created;
    QVERIFY2(visibleRows < 10, qPrintable(QString::number(visibleRows)));
    QVERIFY(rows.first()->IsContentCreated());
    QVERIFY(rows.last()->isVisible());
    QVERIFY(!rows.last()->IsContentCreated());
    area.ensureWidgetVisible(rows.last());
    QTRY_VERIFY(rows.last()->IsContentCreated());
}

void TestToastLazy::lazyNullCreatorAndDeadOwner() {
    lxtest::AssertRecorder rec;
    QWidget host;
    int calls = 0;
    auto* nullContent = new CLazyLoadWidget(&host, core::CSafeFunction<QWidget*()>([&]() -> QWidget* {
        ++calls;
        return nullptr;
    }));
    auto* owner = new QObject;
    auto* orphan = new CLazyLoadWidget(&host, core::CSafeFunction<QWidget*()>(owner, [&]() -> QWidget* {
        ++calls;
        return new QLabel;
    }));
    delete owner;
    host.show();
    nullContent->EnsureCreateContent();
    orphan->EnsureCreateContent();
    QCOMPARE(calls, 1);  // the null creator ran once; the orphan's never
    QVERIFY(!nullContent->layout());
    QVERIFY(!orphan->layout());
    QCOMPARE(rec.count(), 1);
    QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LxLazyLoadWidget"), QStringLiteral("0"), 44));
}

QTEST_MAIN(TestToastLazy)
#include "tst_toast_lazy.moc"
