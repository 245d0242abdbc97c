// The anchor layout: flag classification and arithmetic, sibling references, the builder's exact
// output, sizing inside other layouts, and bad flags.

#include <LxUIKit/QAnchorLayout.h>
#include <LxUIKit/QAnchorLayout_p.h>

#include <QtTest>

#include "LxTestSupport.h"

namespace {
// A child whose size hint is fixed, so placements are easy to predict.
class Box : public QWidget {
public:
    explicit Box(QSize hint, QWidget* parent = nullptr) : QWidget(parent), m_hint(hint) {}
    QSize sizeHint() const override { return m_hint; }
    QSize m_hint;
};
}  // namespace

// A class that declares the flags as a property of its own: its changes send no event.
class DeclaredFlagsBox : public Box {
    Q_OBJECT
    Q_PROPERTY(QString AnchorLayout MEMBER m_strFlags)
public:
    using Box::Box;
    QString m_strFlags;
};

class TestAnchorLayout : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    // Parent 400 x 300 (at 10,20 inside a 420 x 340 host with margins), child hint 40 x 20.
    void parentTokens_data() {
        QTest::addColumn<QString>("flags");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("nothing") << QString() << QRect(10, 20, 40, 20);
        QTest::newRow("right bottom") << "Right, Bottom" << QRect(370, 300, 40, 20);
        QTest::newRow("offsets px") << "Left:12, Top:7" << QRect(22, 27, 40, 20);
        QTest::newRow("offsets fraction") << "Left:0.5, Bottom:0.1" << QRect(210, 270, 40, 20);
        QTest::newRow("center") << "Center" << QRect(190, 160, 40, 20);
        QTest::newRow("hcenter vcenter") << "HCenter, Top:4" << QRect(190, 24, 40, 20);
        QTest::newRow("size half/full") << "Size:0.5 1" << QRect(10, 20, 200, 300);
        QTest::newRow("1.5 is pixels") << "Size:200 1.5" << QRect(10, 20, 200, 1);
        QTest::newRow("size keeps right edge") << "Right, Size:100 10" << QRect(310, 20, 100, 10);
        QTest::newRow("size keeps centre") << "Center, Size:20 10" << QRect(200, 165, 20, 10);
        QTest::newRow("margins fill") << "Margin:4 5 6 7" << QRect(14, 25, 390, 288);
        QTest::newRow("margins step in") << "Right, Bottom, Margin:4 4 8 6" << QRect(362, 294, 40, 20);
        QTest::newRow("builder text") << "Left, Top, Margin:4 4 4 4, , " << QRect(14, 24, 40, 20);
        QTest::newRow("later wins") << "Left, Right" << QRect(370, 20, 40, 20);
    }

    void parentTokens() {
        QFETCH(QString, flags);
        QFETCH(QRect, expected);
        QWidget host;
        auto* layout = new QAnchorLayout(&host);
        layout->setContentsMargins(10, 20, 10, 20);
        auto* box = new Box(QSize(40, 20), &host);
        layout->addWidget(box, flags);
        layout->setGeometry(QRect(0, 0, 420, 340));
        QCOMPARE(box->geometry(), expected);
    }

    // First child: 100 x 50 at (200, 100). The second (hint 30 x 10) is placed against it.
    void siblingTokens_data() {
        QTest::addColumn<QString>("flags");
        QTest::addColumn<QRect>("expected");
        QTest::newRow("left of") << "LeftOfSibling:-1, TopAlignSibling:-1" << QRect(170, 100, 30, 10);
        QTest::newRow("right of") << "RightOfSibling:1" << QRect(300, 0, 30, 10);
        QTest::newRow("top of") << "TopOfSibling:1" << QRect(0, 90, 30, 10);
        QTest::newRow("bottom of") << "BottomOfSibling:1, LeftAlignSibling:1" << QRect(200, 150, 30, 10);
        QTest::newRow("right align") << "RightAlignSibling:1, BottomAlignSibling:1" << QRect(270, 140, 30, 10);
        QTest::newRow("left top") << "LeftTopSibling:1" << QRect(170, 90, 30, 10);
        QTest::newRow("right top") << "RightTopSibling:1" << QRect(300, 90, 30, 10);
        QTest::newRow("left bottom") << "LeftBottomSibling:1" << QRect(170, 150, 30, 10);
        QTest::newRow("right bottom") << "RightBottomSibling:1" << QRect(300, 150, 30, 10);
        QTest::newRow("center align") << "CenterAlignSibling:1" << QRect(235, 120, 30, 10);
        QTest::newRow("hcenter align") << "HCenterAlignSibling:1" << QRect(235, 0, 30, 10);
        QTest::newRow("vcenter align") << "VCenterAlignSibling:1" << QRect(0, 120, 30, 10);
        QTest::newRow("same size") << "SameSizeAs:1" << QRect(0, 0, 100, 50);
        QTest::newRow("same width") << "SameWidthAs:first" << QRect(0, 0, 100, 10);
        QTest::newRow("same height keeps bottom") << "Bottom, SameHeightAs:-1" << QRect(0, 250, 30, 50);
        QTest::newRow("missing name") << "LeftAlignSibling:nobody, Top:3" << QRect(0, 3, 30, 10);
        QTest::newRow("builder right align") << "RightAlignSiblingfirst, " << QRect(0, 0, 30, 10);
    }

    void siblingTokens() {
        QFETCH(QString, flags);
        QFETCH(QRect, expected);
        QWidget host;
        auto* layout = new QAnchorLayout(&host);
        layout->setContentsMargins(0, 0, 0, 0);
        auto* first = new Box(QSize(100, 50), &host);
        first->setObjectName(QStringLiteral("first"));
        auto* second = new Box(QSize(30, 10), &host);
        layout->addWidget(first, QStringLiteral("Left:200, Top:100"));
        layout->addWidget(second, flags);
        layout->setGeometry(QRect(0, 0, 400, 300));
        QCOMPARE(first->geometry(), QRect(200, 100, 100, 50));
        QCOMPARE(second->geometry(), expected);
    }

    void siblingIndicators() {
        QWidget host;
        auto* layout = new QAnchorLayout(&host);
        layout->setContentsMargins(0, 0, 0, 0);
        QWidget* w[3];
        for (int i = 0; i < 3; ++i) {
            w[i] = new QWidget(&host);
            layout->addWidget(w[i], QString());
        }
        w[1]->setObjectName(QStringLiteral("label1"));
        w[2]->setObjectName(QStringLiteral("label1"));  // the first one with the name wins
        auto sibling = [&](const QString& token, int self) {
            QStringList parts = token.split(QLatin1Char(':'));
            return layout->GetSiblingByIndecator(parts, self);
        };
        QCOMPARE(sibling(QStringLiteral("TopAlignSibling:1"), 2), w[0]);
        QCOMPARE(sibling(QStringLiteral("TopAlignSibling:-1"), 2), w[1]);
        QCOMPARE(sibling(QStringLiteral("TopAlignSibling:-2"), 2), w[0]);
        QCOMPARE(sibling(QStringLiteral("TopAlignSibling: label1 "), 0), w[1]);
        QCOMPARE(sibling(QStringLiteral("TopAlignSibling:label2"), 0), nullptr);
        {
            lxtest::AssertRecorder rec;
            QCOMPARE(sibling(QStringLiteral("TopAlignSibling:4"), 0), nullptr);
            QCOMPARE(sibling(QStringLiteral("TopAlignSibling:-1"), 0), nullptr);
            QCOMPARE(rec.count(), 2);
        }
        // The same out-of-range reference inside a pass: asserts, the token does nothing, no crash.
        lxtest::AssertRecorder rec;
        w[0]->setProperty(QAnchorLayout::kFlagsProperty, QStringLiteral("Top:5, BottomOfSibling:9"));
        layout->setGeometry(QRect(0, 0, 200, 200));
        QCOMPARE(rec.count(), 1);
        QCOMPARE(w[0]->y(), 5);
    }

    void numbersAreFractionsOrPixels() {
        QCOMPARE(QAnchorLayout::valueOrPercentageToInt(1.0, 333), 333);
        QCOMPARE(QAnchorLayout::valueOrPercentageToInt(0.5, 333), 166);
        QCOMPARE(QAnchorLayout::valueOrPercentageToInt(0, 333), 0);
        QCOMPARE(QAnchorLayout::valueOrPercentageToInt(1.5, 333), 1);
        QCOMPARE(QAnchorLayout::valueOrPercentageToInt(-0.5, 333), 0);
        QCOMPARE(QAnchorLayout::valueOrPercentageToInt(-12.7, 333), -12);
        QCOMPARE(QAnchorLayout::valueOrPercentageToInt(1e300, 10), 1 << 24);
        QString t = QStringLiteral("Left:0.25");
        QCOMPARE(QAnchorLayout::CalcRelativeOffset(t, 200), 50);
        t = QStringLiteral("Left:1:2");
        QCOMPARE(QAnchorLayout::CalcRelativeOffset(t, 200), 0);
        t = QStringLiteral("Left");
        QCOMPARE(QAnchorLayout::CalcRelativeOffset(t, 200), 0);
    }

    void malformedFlagsAreLoggedOnceAndIgnored() {
        QStringList errors;
        const auto tokens = lx_anchor::ParseFlags(
            QStringLiteral("Left:4, Wobble, Size:1, Margin:1 2 3 x, Centre, Left:abc, Leftish, Top:2:3, , HCenter"),
            &errors);
        QCOMPARE(int(tokens.size()), 2);
        QCOMPARE(tokens[0].enKind, lx_anchor::TokenKind::Left);
        QCOMPARE(tokens[1].enKind, lx_anchor::TokenKind::HCenter);
        QCOMPARE(errors.size(), 7);

        QWidget host;
        auto* layout = new QAnchorLayout(&host);
        auto* box = new Box(QSize(40, 20), &host);
        layout->setContentsMargins(0, 0, 0, 0);
        lxtest::LogCapture log;
        layout->addWidget(box, QStringLiteral("Right, Size:nope 3"));
        for (int i = 0; i < 3; ++i)
            layout->setGeometry(QRect(0, 0, 200, 100));
        QCOMPARE(box->geometry(), QRect(160, 0, 40, 20));
        int warnings = 0;
        for (const QString& text : log.texts())
            warnings += text.contains(QStringLiteral("Size:nope 3")) ? 1 : 0;
        QCOMPARE(warnings, 1);
    }

    void propertyChangeMovesAtNextPass() {
        QWidget host;
        host.resize(300, 200);
        auto* layout = new QAnchorLayout(&host);
        layout->setContentsMargins(0, 0, 0, 0);
        auto* box = new Box(QSize(40, 20), &host);
        layout->addWidget(box, QStringLiteral("Left"));
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QCOMPARE(box->x(), 0);
        box->setProperty(QAnchorLayout::kFlagsProperty, QStringLiteral("Right"));
        QTRY_COMPARE(box->x(), 260);
        // Removing a child stops the layout from watching it.
        QLayoutItem* item = layout->takeAt(0);
        delete item;
        QCOMPARE(layout->count(), 0);
        box->setProperty(QAnchorLayout::kFlagsProperty, QStringLiteral("Left"));
        QTest::qWait(20);
        QCOMPARE(box->x(), 260);
        // A declared property is read again at every pass.
        auto* declared = new DeclaredFlagsBox(QSize(40, 20), &host);
        layout->addWidget(declared, QStringLiteral("Left"));
        layout->activate();
        QCOMPARE(declared->x(), 0);
        declared->m_strFlags = QStringLiteral("Right");
        layout->invalidate();
        layout->activate();
        QCOMPARE(declared->x(), 260);
    }

    void emptyLayoutTouchesNothing() {
        QWidget host;
        auto* layout = new QAnchorLayout(&host);
        layout->setGeometry(QRect(1, 2, 30, 40));
        QCOMPARE(layout->geometry(), QRect(1, 2, 30, 40));
        QCOMPARE(layout->itemAt(0), nullptr);
        QCOMPARE(layout->takeAt(0), nullptr);
    }

    void sizingInsideOtherLayouts() {
        QWidget host;
        auto* layout = new QAnchorLayout(&host);
        layout->setContentsMargins(2, 3, 4, 5);
        auto* a = new Box(QSize(80, 30), &host);
        a->setMinimumSize(50, 10);
        auto* b = new Box(QSize(20, 20), &host);
        layout->addWidget(a, QStringLiteral("Left:10"));
        layout->addWidget(b, QStringLiteral("RightOfSibling:-1, Top:5"));
        // a spans 10..90, b 90..110 and 5..25: the hint holds both plus the margins.
        QCOMPARE(layout->sizeHint(), QSize(110 + 6, 30 + 8));
        QCOMPARE(layout->minimumSize(), QSize(50 + 6, 10 + 8));
    }

    void builderOutput() {
        using B = QAnchorLayoutFlagBuilder;
        // The texts callers know: a margin ends with an extra ", ", an unknown alignment writes an
        // empty token, a right sibling alignment has no colon, numbers keep six digits.
        QCOMPARE(B().AlignToParent(B::Left).Margin(4, 4, 4, 4).AlignToParent(B::Alignment(3)).getFlags(),
                 QStringLiteral("Left, Margin:4 4 4 4, , , "));
        QCOMPARE(B().AlignToSibling(QStringLiteral("label1"), B::Right).getFlags(),
                 QStringLiteral("RightAlignSiblinglabel1, "));
        QCOMPARE(B().SizeToParent(0.333333333, 1234567).Margin(0.5, 2, 3.25, 0).getFlags(),
                 QStringLiteral("Size:0.333333 1.23457e+06, Margin:0.5 2 3.25 0, , "));
        // Every other form: the layout reads back exactly the tokens the builder wrote, in order.
        const QString s = QStringLiteral("s");
        const QString flags = B().AlignToParent(B::Top)
                                  .AlignToParent(B::Right)
                                  .AlignToParent(B::Bottom)
                                  .AlignToParent(B::Center)
                                  .AlignToParent(B::HCenter)
                                  .AlignToParent(B::VCenter)
                                  .AlignToSibling(s, B::Left)
                                  .AlignToSibling(s, B::Top)
                                  .AlignToSibling(s, B::Bottom)
                                  .AlignToSibling(s, B::Center)
                                  .AlignToSibling(s, B::HCenter)
                                  .AlignToSibling(s, B::VCenter)
                                  .SameSizeAsSibling(s)
                                  .SameWidthAsSibling(s)
                                  .SameHeightAsSibling(s)
                                  .RelativeToSibling(s, B::LeftOf)
                                  .RelativeToSibling(s, B::TopOf)
                                  .RelativeToSibling(s, B::RightOf)
                                  .RelativeToSibling(s, B::BottomOf)
                                  .RelativeToSibling(s, B::LeftTop)
                                  .RelativeToSibling(s, B::RightTop)
                                  .RelativeToSibling(s, B::LeftBottom)
                                  .getFlags();
        using K = lx_anchor::TokenKind;
        const QList<K> expected = {K::Top,
                                   K::Right,
                                   K::Bottom,
                                   K::Center,
                                   K::HCenter,
                                   K::VCenter,
                                   K::LeftAlignSibling,
                                   K::TopAlignSibling,
                                   K::BottomAlignSibling,
                                   K::CenterAlignSibling,
                                   K::HCenterAlignSibling,
                                   K::VCenterAlignSibling,
                                   K::SameSizeAs,
                                   K::SameWidthAs,
                                   K::SameHeightAs,
                                   K::LeftOfSibling,
                                   K::TopOfSibling,
                                   K::RightOfSibling,
                                   K::BottomOfSibling,
                                   K::LeftTopSibling,
                                   K::RightTopSibling,
                                   K::LeftBottomSibling};
        QStringList errors;
        QList<K> kinds;
        for (const lx_anchor::Token& t : lx_anchor::ParseFlags(flags, &errors))
            kinds << t.enKind;
        QVERIFY2(errors.isEmpty(), qPrintable(errors.join(QLatin1Char('|'))));
        QCOMPARE(kinds, expected);
    }
};

QTEST_MAIN(TestAnchorLayout)
#include "tst_AnchorLayout.moc"
