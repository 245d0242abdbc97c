// The everyday controls: theme-following colours, elision, clicks and toggles, the slideshow
// frame's paging bookkeeping, flyout placement and the painter's per-side rounded rectangle.

#include <LxStdUI/LCheck.h>
#include <LxStdUI/LComboBox.h>
#include <LxStdUI/LDialogBase.h>
#include <LxStdUI/LLineEdit.h>
#include <LxStdUI/LLink.h>
#include <LxStdUI/LPainter.h>
#include <LxStdUI/LRadio.h>
#include <LxStdUI/LSlideshowBase.h>
#include <LxStdUI/LSwitch.h>
#include <LxStdUI/LText.h>
#include <LxStdUI/LTitle.h>
#include <LxStdUI/ResProvider.h>

#include <QPainter>
#include <QSignalSpy>
#include <QtTest>

#include "LxTestSupport.h"

namespace {
QColor Token(const char* key) { return lx_ui_res::Provider::instance()->color(QString::fromLatin1(key)); }
}  // namespace

class TestStdControls : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void textStylesFollowTheTheme();
    void dottableTextElides();
    void linkClicksOnlyOnReleaseInside();
    void checkRadioAndSwitch();
    void inputsShowTheirState();
    void slideshowPages();
    void flyoutPlacementStaysOnScreen();
    void painterDrawsOnlyTheRequestedSides();
};

void TestStdControls::textStylesFollowTheTheme() {
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
    QCOMPARE(text.textStyle(), 6);
}

void TestStdControls::dottableTextElides() {
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

void TestStdControls::linkClicksOnlyOnReleaseInside() {
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

void TestStdControls::checkRadioAndSwitch() {
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

void TestStdControls::inputsShowTheirState() {
    LLineEdit edit;
    QCOMPARE(edit.borderColorKey(), QStringLiteral("ct_border"));
    edit.setErrorState(true);
    QCOMPARE(edit.borderColorKey(), QStringLiteral("ct_text_red"));
    QVERIFY(edit.styleSheet().contains(lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_text_red"))));
    LComboBox combo;
    const QString light = combo.styleSheet();
    lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
    QVERIFY(combo.styleSheet() != light);
    QVERIFY(combo.styleSheet().contains(lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_bg_primary"))));
}

void TestStdControls::slideshowPages() {
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

void TestStdControls::flyoutPlacementStaysOnScreen() {
    const QRect screen(0, 0, 1000, 800);
    QCOMPARE(LFlyouts::placement(QRect(100, 100, 50, 20), QSize(200, 100), Qt::BottomEdge, 4, screen),
             QPoint(100, 124));
    QCOMPARE(LFlyouts::placement(QRect(100, 100, 50, 20), QSize(200, 100), Qt::RightEdge, 4, screen), QPoint(154, 100));
    QCOMPARE(LFlyouts::placement(QRect(900, 760, 50, 20), QSize(200, 100), Qt::BottomEdge, 4, screen),
             QPoint(800, 700));
    QCOMPARE(LFlyouts::placement(QRect(10, 10, 50, 20), QSize(200, 100), Qt::LeftEdge, 4, screen), QPoint(0, 10));
}

void TestStdControls::painterDrawsOnlyTheRequestedSides() {
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

QTEST_MAIN(TestStdControls)
#include "tst_StdControls.moc"
