// Theme switching and the resource provider: colour tokens in both themes, themed pixmaps,
// colours registered by the host, unknown keys; font tokens: the scale, stepping down it, and
// "font-token:" in style sheets.

#include <LxStdUI/FontToken.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>

#include <QImage>
#include <QLabel>
#include <QtTest>

#include "LxTestSupport.h"

using lx_ui_theme::Manager;

class TestResProvider : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { lxtest::ResetGlobals(); }

    void themeSwitchSignalsOnceAndBumpsGeneration() {
        QSignalSpy spy(Manager::instance(), &Manager::themeChanged);
        const quint64 gen = Manager::instance()->themeGeneration();
        Manager::instance()->setTheme(Manager::Dark);
        Manager::instance()->setTheme(Manager::Dark);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).value<Manager::Theme>(), Manager::Dark);
        QVERIFY(Manager::instance()->themeGeneration() > gen);
        QVERIFY(Manager::instance()->isDark());
    }

    void everyTokenResolvesInBothThemes() {
        const QStringList tokens = {"ct_text_h1",    "ct_text_link",      "ct_line_separator", "ct_text_green",
                                    "ct_text_red",   "ct_text_highlight", "ct_bg_blue",        "ct_lime",
                                    "ck_blue300_50", "ck_gray940",        "ct_bg_primary"};
        for (Manager::Theme theme : {Manager::Light, Manager::Dark}) {
            Manager::instance()->setTheme(theme);
            for (const QString& t : tokens) {
                std::shared_ptr<const QColor> c;
                QVERIFY2(lx_ui_res::Provider::instance()->get(c, t), qPrintable(t));
                QVERIFY2(c && c->isValid(), qPrintable(t));
                std::shared_ptr<const lx_ui_res::ColorString> s;
                QVERIFY(lx_ui_res::Provider::instance()->get(s, t));
                QVERIFY(!s->isEmpty());
            }
        }
        // Semi-transparent keys keep their alpha.
        QCOMPARE(lx_ui_res::Provider::instance()->color(QStringLiteral("ck_blue300_50")).alpha(), 128);
    }

    void resourcesFollowTheTheme() {
        lx_ui_res::TResource<QColor> text(QStringLiteral("ct_text_h1"));
        const QColor light = *text.get();
        Manager::instance()->setTheme(Manager::Dark);
        const QColor dark = *text.get();
        QVERIFY(light != dark);
        QVERIFY(dark.lightness() > light.lightness());  // light text on the dark theme
        // Fixed palette keys do not change with the theme.
        QCOMPARE(lx_ui_res::Provider::instance()->color(QStringLiteral("ck_gray940")),
                 QColor(QStringLiteral("#1e1f22")));

        // Pixmaps prefer a "_dark" sibling in the Dark theme.
        lxtest::TempProductRoot root;
        QImage img(4, 4, QImage::Format_ARGB32);
        img.fill(Qt::white);
        QVERIFY(img.save(root.path() + QStringLiteral("/p.png")));
        img.fill(Qt::black);
        QVERIFY(img.save(root.path() + QStringLiteral("/p_dark.png")));
        lx_ui_res::TResource<QPixmap> pix(root.path() + QStringLiteral("/p.png"));
        QCOMPARE(pix.get()->toImage().pixelColor(1, 1), QColor(Qt::black));
        Manager::instance()->setTheme(Manager::Light);
        QCOMPARE(pix.get()->toImage().pixelColor(1, 1), QColor(Qt::white));

        lx_ui_res::Provider::instance()->registerColor(QStringLiteral("ct_host_token"), QStringLiteral("#010203"),
                                                       QStringLiteral("rgba(1,2,3,0.5)"));
        QCOMPARE(lx_ui_res::Provider::instance()->color(QStringLiteral("ct_host_token")), QColor(1, 2, 3));
        Manager::instance()->setTheme(Manager::Dark);
        QCOMPARE(lx_ui_res::Provider::instance()->color(QStringLiteral("ct_host_token")).alpha(), 128);
    }

    void unknownResourcesAreEmpty() {
        std::shared_ptr<const QColor> c;
        QVERIFY(!lx_ui_res::Provider::instance()->get(c, QStringLiteral("ct_no_such_token")));
        QVERIFY(!c);
        QVERIFY(!lx_ui_res::Provider::instance()->color(QStringLiteral("nope")).isValid());
        std::shared_ptr<const QPixmap> p;
        QVERIFY(!lx_ui_res::Provider::instance()->get(p, QStringLiteral("/no/such/file.png")));
        QVERIFY(!lx_ui_res::Provider::instance()->get(p, QString()));
        std::shared_ptr<QMovie> m;
        QVERIFY(!lx_ui_res::Provider::instance()->get(m, QStringLiteral("/no/such/file.gif")));
        QCOMPARE(lx_ui_res::ParseColor(QStringLiteral("rgba(10, 20, 30, 0.25)")).alpha(), 64);
        QVERIFY(!lx_ui_res::ParseColor(QStringLiteral("not a colour")).isValid());
    }

    void scaleIsOrderedAndStepsDownToTheEnd() {
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

    void styleSheetFontTokenBecomesTheTokensFont() {
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
};

QTEST_MAIN(TestResProvider)
#include "tst_ResProvider.moc"
