// The everyday controls: theme-following colours, elision, clicks and toggles, the slideshow
// frame's paging bookkeeping, flyout placement, the painter's per-side rounded rectangle, the
// standard dialog with the localised words it and the kit show, the frameless window (dragged by
// its title bar, resized by its edges within the minimum size, maximised) and the icon button.

#include <LxCore/Environment.h>
#include <LxStdUI/LCheck.h>
#include <LxStdUI/LComboBox.h>
#include <LxStdUI/LDialog.h>
#include <LxStdUI/LDialogBase.h>
#include <LxStdUI/LFrameLessWnd.h>
#include <LxStdUI/LIconButton.h>
#include <LxStdUI/LIconResource.h>
#include <LxStdUI/LLineEdit.h>
#include <LxStdUI/LLink.h>
#include <LxStdUI/LPainter.h>
#include <LxStdUI/LRadio.h>
#include <LxStdUI/LSlideshowBase.h>
#include <LxStdUI/LSwitch.h>
#include <LxStdUI/LText.h>
#include <LxStdUI/LTitle.h>
#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>

#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

#include "ImageFixtures.h"
#include "LxTestSupport.h"

namespace {
QColor Token(const char* key) { return lx_ui_res::Provider::instance()->color(QString::fromLatin1(key)); }

// Presses at `from`, moves to `to` with the button held and releases there.
void Drag(QWidget* w, const QPoint& from, const QPoint& to) {
    QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, QPointF(to), w->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &move);
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, to);
}
}  // namespace

class TestStdControls : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    void textStylesFollowTheTheme() {
        LText text(QStringLiteral("Quarterly figures"));
        text.setTextStyle(6);
        LTitle title;
        title.setTitleStyle(3);
        title.setLeftMargin(2);
        LLink link(QStringLiteral("More"));
        QCOMPARE(text.palette().color(QPalette::WindowText), Token("ct_text_h3"));
        QCOMPARE(link.palette().color(QPalette::WindowText), Token("ct_text_link"));
        QCOMPARE(title.font().bold(), true);
        QCOMPARE(title.contentsMargins().left(), 8);
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QCOMPARE(text.palette().color(QPalette::WindowText), Token("ct_text_h3"));
        QCOMPARE(link.palette().color(QPalette::WindowText), Token("ct_text_link"));
        QVERIFY(Token("ct_text_link") != QColor(QStringLiteral("#1f6feb")));  // really the dark value
    }

    void dottableTextElides() {
        LText text(QStringLiteral("Lanternfish Robotics Holdings Class B"));
        text.setDottable(true);
        QVERIFY(text.minimumSizeHint().width() < 30);
        text.show();
        text.resize(60, 20);
        QVERIFY(text.isElided());
        QCOMPARE(text.toolTip(), text.text());
        QVERIFY(text.getTextWidth() > 60);
        text.resize(text.getTextWidth(), 20);
        QVERIFY(!text.isElided());
        QCOMPARE(text.toolTip(), QString());
        text.setDottable(false);
        text.resize(60, 20);
        QVERIFY(!text.isElided());
    }

    void linkClicksOnlyOnReleaseInside() {
        LLink link(QStringLiteral("Open"));
        link.resize(80, 20);
        QSignalSpy clicked(&link, &LLink::clicked);
        QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(10, 10));
        QCOMPARE(clicked.count(), 1);
        QTest::mouseClick(&link, Qt::RightButton, {}, QPoint(10, 10));
        QTest::mousePress(&link, Qt::LeftButton, {}, QPoint(10, 10));
        QTest::mouseRelease(&link, Qt::LeftButton, {}, QPoint(200, 10));  // dragged off: no click
        QCOMPARE(clicked.count(), 1);
    }

    void checkRadioAndSwitch() {
        LCheck check(QStringLiteral("Remember me"));
        const int w8 = check.sizeHint().width();
        check.setSpacing(20);
        QCOMPARE(check.sizeHint().width(), w8 + 12);
        check.resize(check.sizeHint());
        QTest::mouseClick(&check, Qt::LeftButton, {}, QPoint(check.width() - 3, check.height() / 2));  // on the text
        QVERIFY(check.isChecked());

        QWidget group;
        auto* a = new LRadio(QStringLiteral("Daily"), &group);
        auto* b = new LRadio(QStringLiteral("Weekly"), &group);
        a->setChecked(true);
        b->resize(b->sizeHint());
        QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(4, b->height() / 2));
        QVERIFY(b->isChecked());
        QVERIFY(!a->isChecked());  // auto-exclusive like any radio button

        LSwitch sw;
        sw.resize(sw.sizeHint());
        QSignalSpy toggled(&sw, &LSwitch::toggled);
        sw.setChecked(true);
        QCOMPARE(sw.knobPosition(), 1.0);  // set from code: no animation
        QTest::mouseClick(&sw, Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(toggled.count(), 2);
        QVERIFY(!sw.isChecked());
        QTRY_COMPARE(sw.knobPosition(), 0.0);
        sw.setEnabled(false);
        QTest::mouseClick(&sw, Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(!sw.isChecked());
    }

    void inputsShowTheirState() {
        LLineEdit edit;
        QCOMPARE(edit.borderColorKey(), QStringLiteral("ct_border"));
        edit.setErrorState(true);
        QCOMPARE(edit.borderColorKey(), QStringLiteral("ct_text_red"));
        QVERIFY(
            edit.styleSheet().contains(lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_text_red"))));
        LComboBox combo;
        const QString light = combo.styleSheet();
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QVERIFY(combo.styleSheet() != light);
        QVERIFY(
            combo.styleSheet().contains(lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_bg_primary"))));
    }

    void slideshowPages() {
        LSlideshowBase frame(nullptr, LSlideshowBase::Ratio_2_1);
        frame.setAutoPlayInterval(0);
        QCOMPARE(frame.heightForWidth(300), 150);
        auto* p0 = new QWidget;
        auto* p1 = new QWidget;
        auto* p2 = new QWidget;
        QCOMPARE(frame.addWidget(p0), 0);
        QCOMPARE(frame.insertWidget(0, p1, false), 0);  // hidden, before p0
        QCOMPARE(frame.insertWidget(3, new QWidget(&frame)), -1);
        QCOMPARE(frame.insertWidget(-2, p2), -1);
        QCOMPARE(frame.insertWidget(0, p0), -1);  // already a page
        QCOMPARE(frame.insertWidget(2, p2), 2);
        QCOMPARE(frame.indexOfWidget(p0), 1);
        QCOMPARE(frame.currentIndex(), 1);  // the current page stays current across inserts
        QSignalSpy changed(&frame, &LSlideshowBase::currentChanged);
        frame.next();
        QCOMPARE(frame.currentIndex(), 2);
        frame.next();  // wraps, skipping the hidden first page
        QCOMPARE(frame.currentIndex(), 1);
        QCOMPARE(changed.count(), 2);
        QVERIFY(frame.indicatorRect(0).isEmpty());
        frame.setContentWidgetVisible(0, true);
        frame.next();
        frame.next();
        QCOMPARE(frame.currentIndex(), 0);
        frame.show();
        frame.resize(300, 150);
        QVERIFY(p1->isVisibleTo(&frame));
        QVERIFY(!p0->isVisibleTo(&frame));
        QCOMPARE(p1->geometry(), frame.rect());
        delete p1;  // a page destroyed elsewhere leaves the frame
        frame.next();
        QCOMPARE(frame.count(), 2);
        QCOMPARE(frame.indexOfWidget(p2), 1);
    }

    void flyoutPlacementStaysOnScreen() {
        const QRect screen(0, 0, 1000, 800);
        QCOMPARE(LFlyouts::placement(QRect(100, 100, 50, 20), QSize(200, 100), Qt::BottomEdge, 4, screen),
                 QPoint(100, 124));
        QCOMPARE(LFlyouts::placement(QRect(100, 100, 50, 20), QSize(200, 100), Qt::RightEdge, 4, screen),
                 QPoint(154, 100));
        QCOMPARE(LFlyouts::placement(QRect(900, 760, 50, 20), QSize(200, 100), Qt::BottomEdge, 4, screen),
                 QPoint(800, 700));
        QCOMPARE(LFlyouts::placement(QRect(10, 10, 50, 20), QSize(200, 100), Qt::LeftEdge, 4, screen), QPoint(0, 10));
    }

    void painterDrawsOnlyTheRequestedSides() {
        QImage img(40, 40, QImage::Format_ARGB32);
        img.fill(Qt::white);
        {
            QPainter p(&img);
            lx_std_ui::LPainter lp(&p);
            lp.drawRoundedRect(QRectF(5.5, 5.5, 30, 30), {QSizeF(0, 0), QSizeF(0, 0), QSizeF(4, 4), QSizeF(0, 0)},
                               {QColor(Qt::red), QColor(Qt::red), QColor(Qt::red), QColor(Qt::red)}, {0, 0, 0, 1},
                               {2, 2, 2, 2});
        }
        QCOMPARE(QColor(img.pixel(20, 35)), QColor(Qt::red));    // bottom side
        QCOMPARE(QColor(img.pixel(20, 5)), QColor(Qt::white));   // no top
        QCOMPARE(QColor(img.pixel(5, 20)), QColor(Qt::white));   // no left
        QCOMPARE(QColor(img.pixel(35, 20)), QColor(Qt::white));  // no right
        QVERIFY(QColor(img.pixel(6, 33)) != QColor(Qt::white));  // the rounded corner it runs into
    }

    void dialogTextsAndCentring() {
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

    void localisedWordsFollowTheLanguage() {
        core::lang::SetLanguageId(core::lang::kLangZhCN);
        // The dialog's own words in Chinese are pinned by the scheme-failure tip (tst_GuiHelper).
        QCOMPARE(lxstdui_multi_lang::rich_text_data_image::textImage(), QStringLiteral("[图片]"));
        core::lang::SetLanguageId(core::lang::kLangEnUS);
        QCOMPARE(lxstdui_multi_lang::gui_helper::textTip(), QStringLiteral("Tip"));
        QCOMPARE(lxstdui_multi_lang::gui_helper::textPageLoadFailed(), QStringLiteral("The page failed to load"));
        core::lang::SetLanguageId(core::lang::kLangZhCN);
        QCOMPARE(lxstdui_multi_lang::gui_helper::textPageLoadFailed(), QStringLiteral("页面加载失败"));
    }

    // Dragged by its title bar (a label that takes no mouse), not by its content; resized by its
    // edges and corners, never below its minimum size, and not at all when not resizable.
    void dragsByTheTitleBarAndResizesByItsEdges() {
        LFrameLessWnd wnd;
        auto* label = new QLabel(QStringLiteral("drag me"));
        wnd.setTitleBarWidget(label);
        wnd.setContentWidget(new QWidget);
        wnd.setMinimumSize(200, 150);
        wnd.setGeometry(100, 100, 400, 300);
        wnd.show();
        QVERIFY(QTest::qWaitForWindowExposed(&wnd));
        Drag(label, QPoint(5, 5), QPoint(45, 25));
        QCOMPARE(wnd.geometry(), QRect(140, 120, 400, 300));
        Drag(wnd.contentWidget(), QPoint(20, 20), QPoint(90, 90));
        QCOMPARE(wnd.geometry(), QRect(140, 120, 400, 300));
        Drag(&wnd, QPoint(398, 298), QPoint(448, 318));  // bottom-right corner
        QCOMPARE(wnd.geometry(), QRect(140, 120, 450, 320));
        Drag(&wnd, QPoint(2, 150), QPoint(-48, 150));  // left edge: the right edge stays
        QCOMPARE(wnd.geometry(), QRect(90, 120, 500, 320));
        Drag(&wnd, QPoint(250, 1), QPoint(250, 500));  // top edge, far past the minimum
        QCOMPARE(wnd.geometry(), QRect(90, 290, 500, 150));
        wnd.setResizable(false);
        Drag(&wnd, QPoint(498, 100), QPoint(700, 100));
        QCOMPARE(wnd.width(), 500);
    }

    void edgesAndMaximise() {
        LFrameLessWnd wnd;
        wnd.resize(300, 200);
        QCOMPARE(wnd.edgesAt(QPoint(1, 1)), Qt::LeftEdge | Qt::TopEdge);
        QCOMPARE(wnd.edgesAt(QPoint(299, 100)), Qt::Edges(Qt::RightEdge));
        QCOMPARE(wnd.edgesAt(QPoint(150, 199)), Qt::Edges(Qt::BottomEdge));
        QCOMPARE(wnd.edgesAt(QPoint(150, 100)), Qt::Edges());
        QCOMPARE(wnd.chromeSize(), QSize(12, 12 + wnd.titleBarHeight()));
        wnd.show();
        wnd.toggleMaximized();
        QTRY_VERIFY(wnd.isMaximized());
        QCOMPARE(wnd.edgesAt(QPoint(1, 1)), Qt::Edges());
        QCOMPARE(wnd.chromeSize(), QSize(0, wnd.titleBarHeight()));
    }

    void iconButtonRotatesAndHovers() {
        LIconButton button(QString::fromLatin1(LResource::icon_arrow_right_normal));
        button.setFixedSize(40, 40);
        button.setIconSize(QSize(32, 32));
        button.setHoverBackgroundEnabled(true);
        button.setRotate(380);
        QCOMPARE(button.rotate(), 20);
        button.setRotate(-90);
        QCOMPARE(button.rotate(), 270);

        // Half a turn about the centre: the drawing matches the unturned one mirrored both ways.
        const auto distance = [](const QImage& a, const QImage& b) {
            qint64 d = 0;
            for (int y = 0; y < a.height(); ++y)
                for (int x = 0; x < a.width(); ++x)
                    d += qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
            return d;
        };
        button.setRotate(0);
        const QImage plain = lxtest::Render(&button, Qt::white);
        button.setRotate(180);
        const QImage turned = lxtest::Render(&button, Qt::white);
        const qint64 unchanged = distance(turned, plain), mirrored = distance(turned, plain.mirrored(true, true));
        QVERIFY2(mirrored * 4 < unchanged, qPrintable(QStringLiteral("%1 %2").arg(mirrored).arg(unchanged)));

        QVERIFY(!button.isShowingHoverBackground());
        QEvent enter(QEvent::Enter);
        QApplication::sendEvent(&button, &enter);
        QVERIFY(button.isShowingHoverBackground());
        const QImage hovered = lxtest::Render(&button, Qt::white);
        QVERIFY(hovered.pixelColor(1, 20) != QColor(Qt::white));  // the background reaches the edges
        button.setEnabled(false);
        QVERIFY(!button.isShowingHoverBackground());
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        button.setEnabled(true);
        QVERIFY(!button.isShowingHoverBackground());
    }
};

QTEST_MAIN(TestStdControls)
#include "tst_StdControls.moc"
