// The lazy-load container: content made on first show or first paint, once, and never for a
// creator whose owner is gone.

#include <LxCore/SafeFunction.h>
#include <LxUIKit/LxLazyLoadWidget.h>

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QtTest>

#include "LxTestSupport.h"

using core::pattern::CLazyLoadWidget;

class TestLazyLoadWidget : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    void createsOnFirstShowOnce() {
        QWidget host;
        int calls = 0;
        QPointer<QLabel> content;
        auto* lazy = new CLazyLoadWidget(&host, core::CSafeFunction<QWidget*()>(&host, [&]() -> QWidget* {
            ++calls;
            content = new QLabel(QStringLiteral("content"));
            content->setFixedSize(120, 30);
            return content;
        }));
        QCOMPARE(lazy->GetCreateMode(), CLazyLoadWidget::CreateOnShow);
        QCOMPARE(calls, 0);
        host.show();
        QCOMPARE(calls, 1);
        QVERIFY(content && content->parentWidget() == lazy);
        // The content fills the container, whose size limits become the content's.
        QTRY_COMPARE(lazy->maximumSize(), QSize(120, 30));
        host.hide();
        host.show();
        lazy->EnsureCreateContent();
        QCOMPARE(calls, 1);
    }

    void paintModeWaitsForAPaint() {
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

    void nullCreatorAndDeadOwner() {
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
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LxLazyLoadWidget"), QStringLiteral("0")));
        QCOMPARE(rec.count(), 1);
    }
};

QTEST_MAIN(TestLazyLoadWidget)
#include "tst_LazyLoadWidget.moc"
