// The inspector's design, debug and window-scale tabs: live edits with undo, the reasons a widget
// cannot be seen, the window rendered at several device pixel ratios; the selection frame that
// follows the selected widget.

#include <LxUIKit/DevTools/Spy/LxCurrentWidgetHighLightView_p.h>
#include <LxUIKit/DevTools/Spy/LxDesignerView_p.h>
#include <LxUIKit/DevTools/Spy/LxUIDebugView_p.h>
#include <LxUIKit/DevTools/Spy/LxWindowScaleDebuger_p.h>

#include <QGraphicsOpacityEffect>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

#include "LxTestSupport.h"
#include "SpyTestUtil.h"

namespace {
using Snapshot = LxDesignerView::Snapshot;
bool Same(const Snapshot& a, const Snapshot& b) {
    return a.geometry == b.geometry && a.sizePolicy == b.sizePolicy && a.contentsMargins == b.contentsMargins &&
           a.layoutMargins == b.layoutMargins;
}
QToolButton* ButtonWithText(QWidget* parent, const QString& text) {
    const auto buttons = parent->findChildren<QToolButton*>();
    for (QToolButton* b : buttons)
        if (b->text() == text)
            return b;
    return nullptr;
}
}  // namespace

class TestSpyEditAndDebugViews : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() {
        LxCurrentWidgetHighLightView::Release();
        ILxUISpyComponent::ResetSharedState();
        lxtest::ResetGlobals();
    }
    void designerEditsAndUndo() {
        QWidget top;
        top.resize(300, 200);
        auto* panel = new QWidget(&top);
        panel->setGeometry(10, 20, 100, 50);
        auto* inner = new QVBoxLayout(panel);
        inner->setContentsMargins(4, 4, 4, 4);
        top.show();
        QVERIFY(QTest::qWaitForWindowExposed(&top));
        LxDesignerView view(nullptr);
        view.show();
        ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(panel, nullptr);
        QCOMPARE(view.target(), panel);
        QCOMPARE(view.geometryBox(0)->value(), 10);
        QVERIFY(!view.undoButton()->isEnabled());
        const Snapshot original = Snapshot::Of(panel);

        // Arrow buttons: 1 px, 10 px with Shift.
        QTest::mouseClick(ButtonWithText(&view, QStringLiteral("→")), Qt::LeftButton);
        QCOMPARE(panel->geometry(), QRect(11, 20, 100, 50));
        QTest::mouseClick(ButtonWithText(&view, QStringLiteral("↑")), Qt::LeftButton, Qt::ShiftModifier);
        QCOMPARE(panel->geometry(), QRect(11, 10, 100, 50));
        QCOMPARE(view.geometryBox(1)->value(), 10);  // the fields follow
        view.Nudge(0, 0, -500, 0);                   // never below zero
        QCOMPARE(panel->width(), 0);
        view.geometryBox(2)->setValue(80);  // a field applies at once
        QCOMPARE(panel->width(), 80);
        QComboBox* h = view.horizontalPolicyBox();
        h->setCurrentIndex(h->findData(int(QSizePolicy::Expanding)));
        emit h->activated(h->currentIndex());
        QCOMPARE(panel->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        view.SetContentsMargins(QMargins(1, 2, 3, 4));
        view.SetLayoutMargins(QMargins(8, 8, 8, 8));
        QCOMPARE(inner->contentsMargins(), QMargins(8, 8, 8, 8));
        view.SetLayoutMargins(QMargins(8, 8, 8, 8));  // no change, no undo step
        QCOMPARE(view.undoCount(), 7);

        // A change on another widget that then dies is skipped by undo.
        {
            QWidget other(&top);
            ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(&other, nullptr);
            view.Nudge(5, 5, 0, 0);
        }
        QVERIFY(!view.target());
        QVERIFY(view.Undo());
        QCOMPARE(inner->contentsMargins(), QMargins(4, 4, 4, 4));
        QCOMPARE(panel->contentsMargins(), QMargins(1, 2, 3, 4));
        while (view.Undo()) {
        }
        QVERIFY(Same(Snapshot::Of(panel), original));
        QVERIFY(!view.undoButton()->isEnabled());

        // A phantom cannot be edited.
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(
            PseudoWidget(QRect(0, 0, 10, 10), panel, "cell", nullptr, "Cell", {}), nullptr);
        QVERIFY(!view.target());
        QVERIFY(!view.geometryBox(0)->isEnabled());
    }
    void notVisibleReasons_data() {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("reason");  // start of the first reason; empty: can be seen
        auto row = [](const char* name, const char* scenario, const char* reason) {
            QTest::newRow(name) << QString(scenario) << QString(reason);
        };
        row("visible", "visible", "");
        row("hidden itself", "hide", "The widget itself is hidden: hide()");
        row("added after show", "late", "The widget itself is hidden: it was added after");
        row("hidden ancestor", "hide panel", "Its ancestor QWidget \"panel\" is hidden");
        row("minimized", "minimize", "Its window QWidget \"desk\" is minimized");
        row("zero size", "zero", "It has zero size (0 × 30)");
        row("outside parent", "outside", "It lies outside its parent's rectangle");
        row("clipped by ancestor", "outside panel", "It lies outside what its ancestor QWidget \"desk\"");
        row("covered", "cover", "It is fully covered by its sibling QLabel \"cover\"");
        row("partly covered", "cover part", "");
        row("sibling below", "cover below", "");
        row("ancestor covered", "cover panel", "Its ancestor QWidget \"panel\" is fully covered there");
        row("inspector frame above", "frame", "");
        row("opacity 0", "opacity", "It is fully transparent: its QGraphicsOpacityEffect");
        row("ancestor opacity 0", "panel opacity", "It is fully transparent: the QGraphicsOpacityEffect of");
        row("opacity effect off", "opacity off", "");
    }
    void notVisibleReasons() {
        QFETCH(QString, scenario);
        QFETCH(QString, reason);
        SpyDesk desk;
        QVERIFY(desk.exposed());
        QWidget& top = desk.top;
        QWidget* panel = desk.panel;
        QPushButton* target = desk.button;
        QWidget* subject = target;
        if (scenario == "hide") {
            target->hide();
        } else if (scenario == "late") {
            subject = new QPushButton("Sell", panel);
        } else if (scenario == "hide panel") {
            panel->hide();
        } else if (scenario == "minimize") {
            top.showMinimized();
        } else if (scenario == "zero") {
            target->resize(0, 30);
        } else if (scenario == "outside") {
            target->move(250, 10);
        } else if (scenario == "outside panel") {
            panel->move(320, 10);
        } else if (scenario.startsWith("cover")) {
            const bool below = scenario == "cover below";
            QWidget* host = scenario == "cover panel" ? &top : panel;
            auto* cover = new QLabel(host);
            cover->setObjectName("cover");
            cover->setGeometry(scenario == "cover part" ? QRect(0, 0, 50, 100) : QRect(0, 0, 250, 150));
            cover->show();
            if (below)
                cover->lower();
        } else if (scenario == "frame") {
            auto* frame = new LxWidgetRectView(Qt::red, Qt::SolidLine);
            frame->setParent(panel);
            frame->setGeometry(target->geometry());
            frame->show();
        } else if (scenario.contains("opacity")) {
            auto* effect = new QGraphicsOpacityEffect;
            effect->setOpacity(0);
            effect->setEnabled(scenario != "opacity off");
            (scenario == "panel opacity" ? static_cast<QWidget*>(panel) : target)->setGraphicsEffect(effect);
        }
        const QStringList reasons = LxUIDebugView::NotVisibleReasons(subject);
        if (reason.isEmpty()) {
            QVERIFY2(reasons.isEmpty(), qPrintable(reasons.join(" | ")));
        } else {
            QVERIFY2(reasons.value(0).startsWith(reason), qPrintable(reasons.join(" | ")));
            QVERIFY(LxUIDebugView::ReportHtml(subject).contains(reason.toHtmlEscaped()));
        }
    }
    void debugReportLayoutPlace() {
        QWidget top;
        auto* grid = new QGridLayout(&top);
        auto* nested = new QVBoxLayout;
        auto* first = new QLabel("Bid");
        auto* second = new QLabel("Ask");
        nested->addWidget(first);
        nested->addWidget(second, 3);
        grid->addLayout(nested, 1, 0);
        auto* cell = new QLabel("Last");
        grid->addWidget(cell, 2, 1, 1, 2);
        top.show();
        QVERIFY(QTest::qWaitForWindowExposed(&top));

        LxUIDebugView view(nullptr);
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(cell, nullptr);
        QVERIFY(view.browser()->toPlainText().contains("row 2, column 1 (spanning 1 × 2) of QGridLayout"));
        const QString nestedText = LxUIDebugView::ReportHtml(second);
        QVERIFY2(nestedText.contains("item 1 of 2 in QVBoxLayout, stretch 3, nested as item"), qPrintable(nestedText));
        QVERIFY(LxUIDebugView::ReportHtml(&top).contains("QGridLayout"));
        // The refresh button reads the widget again.
        cell->hide();
        QVERIFY(!view.browser()->toPlainText().contains("It cannot be seen"));
        QTest::mouseClick(view.refreshButton(), Qt::LeftButton);
        QVERIFY(view.browser()->toPlainText().contains("The widget itself is hidden"));
        // A phantom is explained through its container.
        ILxUISpyComponent::NotifySelectedPseudoWidgetChanged(
            PseudoWidget(QRect(1, 1, 5, 5), first, "x", nullptr, "", {}), nullptr);
        QVERIFY(view.browser()->toPlainText().contains("is drawn by this widget"));
    }
    void windowScaleRendering() {
        QWidget top;
        top.resize(200, 150);
        QPalette pal = top.palette();
        pal.setColor(QPalette::Window, Qt::white);
        top.setPalette(pal);
        top.setAutoFillBackground(true);
        auto* red = new QWidget(&top);
        red->setGeometry(40, 40, 20, 20);
        QPalette redPal = red->palette();
        redPal.setColor(QPalette::Window, Qt::red);
        red->setPalette(redPal);
        red->setAutoFillBackground(true);
        top.show();
        QVERIFY(QTest::qWaitForWindowExposed(&top));

        LxWindowScaleDebuger view(nullptr);
        view.resize(900, 400);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(red, nullptr);
        QCOMPARE(view.renderedWindow(), &top);
        const QVector<QPixmap>& pms = view.pixmaps();
        QCOMPARE(pms.size(), 4);
        const QVector<QSize> sizes = {{200, 150}, {250, 188}, {300, 225}, {400, 300}};
        for (int i = 0; i < 4; ++i) {
            const qreal ratio = LxWindowScaleDebuger::Ratios()[i];
            QCOMPARE(pms[i].size(), sizes[i]);
            QCOMPARE(pms[i].devicePixelRatio(), ratio);
            // The window painted itself at that ratio: the red square lands where the ratio puts it.
            const QImage img = pms[i].toImage();
            QCOMPARE(QColor(img.pixel(int(50 * ratio), int(50 * ratio))), QColor(Qt::red));
            QCOMPARE(QColor(img.pixel(int(63 * ratio), int(50 * ratio))), QColor(Qt::white));
        }
        const auto captions = view.findChildren<QLabel*>("SpyScaleCaption");
        QCOMPARE(captions.size(), 4);
        QCOMPARE(captions[1]->text(), QStringLiteral("×1.25 · 250 × 188 px"));

        // A large window is scaled down for display, unless actual pixels are asked for.
        top.resize(1000, 500);
        QTest::mouseClick(view.refreshButton(), Qt::LeftButton);
        QCOMPARE(view.pixmaps().last().size(), QSize(2000, 1000));
        auto shownWidth = [&view](int i) {
            const auto images = view.findChildren<QLabel*>();
            QList<QLabel*> withPixmap;
            for (QLabel* l : images)
                if (!l->pixmap(Qt::ReturnByValue).isNull())
                    withPixmap << l;
            return withPixmap.value(i) ? withPixmap.value(i)->pixmap(Qt::ReturnByValue).width() : -1;
        };
        QCOMPARE(shownWidth(3), LxWindowScaleDebuger::kMaxShownWidth);
        QVERIFY(view.findChildren<QLabel*>("SpyScaleCaption").last()->text().endsWith("shown at 24 %"));
        view.actualPixelsBox()->setChecked(true);
        QCOMPARE(shownWidth(3), 2000);
        QVERIFY(LxWindowScaleDebuger::RenderAt(nullptr, 2).isNull());
    }
    void selectionFrameFollowsItsWidget() {
        SpyDesk desk;
        QVERIFY(desk.exposed());
        LxCurrentWidgetHighLightView* hl = LxCurrentWidgetHighLightView::Init();
        ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(PseudoWidget(desk.button), nullptr);
        QWidget* frame = hl->selectionFrame();
        QVERIFY(frame && frame->isVisible());
        QCOMPARE(frame->geometry(), QRect(QPoint(20, 20), QSize(80, 30)));
        // It hides with an ancestor (a page switched away) and comes back with it.
        desk.panel->hide();
        QVERIFY(!frame->isVisible());
        desk.panel->show();
        QVERIFY(frame->isVisible());
        desk.button->move(40, 50);
        QCOMPARE(frame->geometry(), QRect(QPoint(50, 60), QSize(80, 30)));
        desk.button->resize(100, 40);
        QCOMPARE(frame->geometry(), QRect(QPoint(50, 60), QSize(100, 40)));
        // Once the selection moves on, the former widget no longer moves the frame.
        ILxUISpyComponent::NotifySelectedPseudoWidgetChangedAndClicked(PseudoWidget(desk.panel), nullptr);
        QCOMPARE(frame->geometry(), QRect(QPoint(10, 10), QSize(200, 100)));
        desk.button->hide();
        QVERIFY(frame->isVisible());
        QCOMPARE(frame->geometry(), QRect(QPoint(10, 10), QSize(200, 100)));
    }
};

QTEST_MAIN(TestSpyEditAndDebugViews)
#include "tst_SpyEditAndDebugViews.moc"
