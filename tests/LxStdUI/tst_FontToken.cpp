// Font tokens: the scale, stepping down it, and "font-token:" in style sheets.

#include <LxStdUI/FontToken.h>

#include <QLabel>
#include <QtTest>

#include "LxTestSupport.h"

class TestFontToken : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }
    void scaleIsOrderedAndStepsDownToTheEnd();
    void styleSheetFontTokenBecomesTheTokensFont();
};

void TestFontToken::scaleIsOrderedAndStepsDownToTheEnd() {
    const auto& all = LFontTokenLoader::getAllFontTokens();
    QCOMPARE(all.size(), 16);
    QSet<int> numbers;
    for (int i = 0; i < all.size(); ++i) {
        numbers.insert(all[i].i32Number);
        if (i > 0)
            QVERIFY(all[i - 1].i32PixelSize > all[i].i32PixelSize ||
                    (all[i - 1].i32PixelSize == all[i].i32PixelSize && all[i - 1].i32Weight >= all[i].i32Weight));
    }
    QCOMPARE(numbers.size(), 16);
    QVERIFY(LFontTokenLoader::hasFontToken(QStringLiteral("BigTitle3")));
    QVERIFY(LFontTokenLoader::hasFontToken(QStringLiteral("title2")));
    QCOMPARE(LFontTokenLoader::font(QStringLiteral("title2")).pixelSize(), 16);
    QVERIFY(LFontTokenLoader::font(QStringLiteral("title2")).bold());
    QCOMPARE(LFontTokenLoader::pixelSize(QStringLiteral("unknown")), -1);

    // Stepping down walks the whole scale once and ends.
    QString t = all.first().strName;
    int steps = 0;
    while (!t.isEmpty()) {
        t = LFontTokenLoader::getSmallerFontToken(t);
        ++steps;
    }
    QCOMPARE(steps, 16);
    QVERIFY(LFontTokenLoader::getSmallerFontToken(QStringLiteral("unknown")).isEmpty());
}

void TestFontToken::styleSheetFontTokenBecomesTheTokensFont() {
    QLabel label(QStringLiteral("x"));
    label.setStyleSheet(QStringLiteral("color:white; font-token:title2; margin:5px;"));
    label.ensurePolished();
    QCOMPARE(label.font().pixelSize(), 16);
    QVERIFY(label.font().bold());
    QVERIFY(label.styleSheet().contains(QStringLiteral("margin:5px")));

    // Set after the widget was shown, and with a token of another size.
    label.show();
    label.setStyleSheet(QStringLiteral("font-token:caption1;"));
    QCOMPARE(label.font().pixelSize(), 12);

    lxtest::LogCapture capture;
    const QString unknown = LFontTokenLoader::resolveStyleSheet(QStringLiteral("font-token:nope; color:red;"));
    QVERIFY(!unknown.contains(QStringLiteral("font-token")));
    QVERIFY(unknown.contains(QStringLiteral("color:red;")));
    QVERIFY(capture.contains(QStringLiteral("unknown font token \"nope\"")));
}

QTEST_MAIN(TestFontToken)
#include "tst_FontToken.moc"
