// Rich-text items and snippets: text forms, shown sizes, value round trips, markup and escaping.

#include "LxTestSupport.h"

#include <LxStdUI/MultiLang.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoji.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>
#include <LxUIKit/RichText/LxRichTextSnippetImage.h>
#include <LxUIKit/RichText/LxRichTextSnippetLink.h>
#include <LxUIKit/RichText/LxRichTextSnippetPortfolio.h>
#include <LxUIKit/RichText/LxRichTextSnippetStock.h>
#include <LxUIKit/RichText/LxRichTextSnippetText.h>
#include <LxUIKit/RichText/LxRichTextSnippetUser.h>

#include <QImage>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QtTest>

namespace {

const QChar kZw(0x200B);

QString MakeImage(const QTemporaryDir& dir, const QString& name, const QSize& size) {
    QImage img(size, QImage::Format_ARGB32);
    img.fill(Qt::red);
    const QString path = dir.filePath(name);
    img.save(path);
    return path;
}

// Anchors and images that a document made from `html` holds, as "a:<href>" and "img:<name>".
QStringList Structure(const QString& html) {
    QTextDocument doc;
    doc.setHtml(html);
    QStringList out;
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat f = it.fragment().charFormat();
            if (f.isAnchor())
                out << QStringLiteral("a:") + f.anchorHref();
            if (f.isImageFormat())
                out << QStringLiteral("img:") + f.toImageFormat().name();
        }
    out.removeDuplicates();
    return out;
}

QString PlainOf(const QString& html) {
    QTextDocument doc;
    doc.setHtml(html);
    return doc.toPlainText().remove(kZw);
}

std::shared_ptr<LxRichTextConfig> Cfg() { return std::make_shared<LxRichTextConfig>(); }

}  // namespace

class TestRichTextData : public QObject {
    Q_OBJECT
private slots:
    void init() { lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light); }

    void userDisplayText() {
        CLxRichTextDataUser user;
        user.SetUserData(12345, QString());
        QCOMPARE(user.GetDisplayText(), QStringLiteral("12345"));
        QCOMPARE(user.ToPlainText(), QStringLiteral("12345"));
        user.SetDisplayText(QStringLiteral("x"));
        QCOMPARE(user.GetDisplayText(), QStringLiteral("x"));
        QCOMPARE(user.ToHtml(), QStringLiteral("<span>x</span>"));
        // A new nickname is not hidden behind a display text made from the old data.
        user.SetUserData(7, QStringLiteral("Ann"));
        QCOMPARE(user.GetDisplayText(), QStringLiteral("Ann"));
        user.SetUserIDAndDisplayText(8, QStringLiteral("@Ann"));
        QCOMPARE(user.GetDisplayText(), QStringLiteral("@Ann"));
        QCOMPARE(user.GetUserID(), quint64(8));
        // The id is written in full, never as a signed or shortened number.
        CLxRichTextDataUser big;
        big.SetUserData(std::numeric_limits<uint64_t>::max(), QString());
        QCOMPARE(big.GetDisplayText(), QStringLiteral("18446744073709551615"));
    }

    void imageShownSize_data() {
        QTest::addColumn<QSize>("origin");
        QTest::addColumn<QSize>("shown");
        QTest::newRow("third") << QSize(600, 300) << QSize(200, 100);
        QTest::newRow("capped") << QSize(1200, 600) << QSize(300, 150);
        QTest::newRow("thin, rounds up") << QSize(1201, 3) << QSize(300, 1);
        QTest::newRow("exactly 300") << QSize(900, 90) << QSize(300, 30);
        QTest::newRow("just over") << QSize(903, 903) << QSize(300, 300);
        QTest::newRow("tiny") << QSize(1, 1) << QSize(0, 0);
    }
    void imageShownSize() {
        QFETCH(QSize, origin);
        QFETCH(QSize, shown);
        QTemporaryDir dir;
        CLxRichTextDataImage image;
        image.SetImagePath(MakeImage(dir, QStringLiteral("a.png"), origin));
        QCOMPARE(image.GetImageOriginSize(), origin);
        QCOMPARE(image.GetImageShownSize(), shown);
        QCOMPARE(CLxRichTextDataImage::ShownSizeForOrigin(origin), shown);
    }

    void imageUnreadableAndDisplayPath() {
        QTemporaryDir dir;
        CLxRichTextDataImage image;
        image.SetImagePath(dir.filePath(QStringLiteral("missing.png")));
        QCOMPARE(image.GetImageOriginSize(), QSize(-1, -1));
        QCOMPARE(image.GetImageShownSize(), QSize(0, 0));
        QCOMPARE(image.ToHtml(), QStringLiteral("<img src=\"%1\" width=\"0\" height=\"0\">").arg(image.GetImagePath()));
        const QString junk = lxtest::WriteFile(dir.filePath(QStringLiteral("junk.png")), "not a picture");
        image.SetImagePath(junk);
        QCOMPARE(image.GetImageShownSize(), QSize(0, 0));

        // Sizes come from the display path; the markup names the image path.
        const QString shown = MakeImage(dir, QStringLiteral("thumb.png"), QSize(300, 150));
        image.SetImagePath(QStringLiteral("https://host/x%2.png"));
        image.SetDisplayImagePath(shown);
        QCOMPARE(image.GetDisplayImagePath(), shown);
        QCOMPARE(image.GetImageShownSize(), QSize(100, 50));
        QCOMPARE(image.ToHtml(), QStringLiteral("<img src=\"https://host/x%2.png\" width=\"100\" height=\"50\">"));
        image.SetDisplayImagePath(QString());
        QCOMPARE(image.GetDisplayImagePath(), image.GetImagePath());
    }

    void plainTextAndRawHtml() {
        CLxRichTextDataText text(QStringLiteral("a<b>"));
        QCOMPARE(text.ToHtml(), QStringLiteral("<span>a<b></span>"));  // raw form: as written
        QCOMPARE(text.ToPlainText(), QStringLiteral("a<b>"));

        CLxRichTextDataImage image;
        QCOMPARE(image.ToPlainText(), lxstdui_multi_lang::rich_text_data_image::textImage());
        CLxRichTextDataEmotion emotion;
        emotion.SetEmoticonIdAndFilePath(17, QStringLiteral(":/e/17.png"));
        QCOMPARE(emotion.ToPlainText(), lxstdui_multi_lang::rich_text_data_emotion::textEmotion());
        QCOMPARE(emotion.ToHtml(), QStringLiteral("<img src=\":/e/17.png\" >"));

        CLxRichTextDataStock stock;
        stock.SetStockData(700, QStringLiteral("Tencent"));
        QCOMPARE(stock.GetDisplayText(), QString());  // stored as given, nothing derived
        stock.SetStockIdAndDisplayText(700, QStringLiteral("$Tencent(00700)$"));
        QCOMPARE(stock.ToPlainText(), QStringLiteral("$Tencent(00700)$"));
        QCOMPARE(stock.GetStockName(), QStringLiteral("Tencent"));

        CLxRichTextDataPortfolio pf;
        pf.SetPortfolioData(5, QStringLiteral("Tech"), QStringLiteral("T1"));
        QCOMPARE(pf.ToPlainText(), QStringLiteral("Tech"));
        QCOMPARE(pf.ToHtml(), QStringLiteral("<span>Tech</span>"));

        CLxRichTextDataLink link;
        link.SetLinkData(QStringLiteral("title"), QStringLiteral("https://a.example/"),
                         CLxRichTextDataLink::LinkType_InApp);
        QCOMPARE(link.GetUrl(), QStringLiteral("https://a.example/"));
        QCOMPARE(link.GetUrlTitle(), QStringLiteral("title"));
        QCOMPARE(link.ToPlainText(), link.GetUrl());
        QCOMPARE(link.ToHtml(), QStringLiteral("<a href=\"https://a.example/\">title</a>"));

        CLxRichTextDataEmoji emoji;
        emoji.SetEmojiText(QStringLiteral("😀"));
        QCOMPARE(emoji.ToPlainText(), QStringLiteral("😀"));
        QCOMPARE(emoji.GetType(), 8);
    }

    void protoValueKeys() {
        CLxRichTextDataUser user;
        user.SetUserIDAndDisplayText(std::numeric_limits<uint64_t>::max() - 1, QStringLiteral("中文"));
        const core::CProtoValue v = user.ToProtoValue();
        QCOMPARE(v["type"].asInt32(), 3);
        QCOMPARE(v["userid"].asUInt64(), std::numeric_limits<uint64_t>::max() - 1);
        QVERIFY(v["userid"].json().isUInt64());
        QCOMPARE(QString::fromStdString(v["displaytext"].asString()), QStringLiteral("中文"));
        QVERIFY(v.isMember("nickname"));

        CLxRichTextDataEmoji emoji;
        emoji.SetImagePath(QStringLiteral("a.png"));
        emoji.SetEmojiText(QStringLiteral("x"));
        const core::CProtoValue e = emoji.ToProtoValue();
        QCOMPARE(e["type"].asInt32(), 8);
        QCOMPARE(QString::fromStdString(e["imagepath"].asString()), QStringLiteral("a.png"));
        QVERIFY(e.isMember("displayimagepath"));
        QCOMPARE(QString::fromStdString(e["emojitext"].asString()), QStringLiteral("x"));

        CLxRichTextDataEmotion emotion;
        emotion.SetEmoticonIdAndFilePath(4000000000u, QStringLiteral("p"));
        const core::CProtoValue m = emotion.ToProtoValue();
        QVERIFY(m["emotionid"].json().isUInt());
        QCOMPARE(m["emotionid"].asUInt32(), 4000000000u);

        CLxRichTextDataLink link;
        link.SetLinkData(QStringLiteral("t"), QStringLiteral("u"), CLxRichTextDataLink::LinkType_Download);
        const core::CProtoValue l = link.ToProtoValue();
        QCOMPARE(l["linktype"].asInt32(), int(CLxRichTextDataLink::LinkType_Download));
        QCOMPARE(QString::fromStdString(l["url"].asString()), QStringLiteral("u"));
        QCOMPARE(QString::fromStdString(l["urltitle"].asString()), QStringLiteral("t"));
    }

    // Every kind survives ToProtoValue -> FromProtoValue on a fresh object, also through JSON text;
    // snippets read back also show the right text.
    void roundTrips() {
        auto viaJson = [](const core::CProtoValue& v) {
            core::CProtoValue back;
            [&] { QVERIFY(back.fromJsonString(v.toJsonString())); }();
            return back;
        };
        {
            CLxRichTextSnippetText a(QStringLiteral("<i>混合 text</i>"));
            CLxRichTextSnippetText b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetText(), a.GetText());
            QCOMPARE(b.GetShownText(), a.GetShownText());
        }
        {
            CLxRichTextSnippetUser a;
            a.SetUserData(std::numeric_limits<uint64_t>::max(), QStringLiteral("<b>Bob</b>"));
            (void)a.GetDisplayText();
            CLxRichTextSnippetUser b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetUserID(), a.GetUserID());
            QCOMPARE(b.GetNickName(), a.GetNickName());
            QCOMPARE(b.GetDisplayText(), a.GetDisplayText());
            QCOMPARE(b.GetShownText(), QStringLiteral("&lt;b&gt;Bob&lt;&#x2F;b&gt;"));
        }
        {
            CLxRichTextSnippetStock a;
            a.SetStockData(9000000000ull, QStringLiteral("A&B"));
            a.SetStockIdAndDisplayText(9000000000ull, QStringLiteral("$A&B$"));
            CLxRichTextSnippetStock b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetStockID(), a.GetStockID());
            QCOMPARE(b.GetStockName(), a.GetStockName());
            QCOMPARE(b.GetDisplayText(), a.GetDisplayText());
            QCOMPARE(b.GetShownText(), QStringLiteral("$A&amp;B$"));
        }
        {
            CLxRichTextSnippetPortfolio a;
            a.SetPortfolioData(77, QStringLiteral("Tech"), QStringLiteral("T1"));
            CLxRichTextSnippetPortfolio b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetPortfolioID(), quint64(77));
            QCOMPARE(b.GetPortfolioCode(), QStringLiteral("T1"));
            QCOMPARE(b.GetPortfolioName(), QStringLiteral("Tech"));
            QCOMPARE(b.GetShownText(), QStringLiteral("$Tech(T1)$"));
        }
        {
            CLxRichTextSnippetEmoticon a(17, QStringLiteral(":/e/17.png"));
            CLxRichTextSnippetEmoticon b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetEmoticonID(), 17u);
            QCOMPARE(b.GetFilePath(), a.GetFilePath());
        }
        {
            CLxRichTextSnippetLink a;
            a.SetLinkData(QStringLiteral("my link"), QStringLiteral("https://x/?a=1&b=2"),
                          CLxRichTextDataLink::LinkType_InApp);
            CLxRichTextSnippetLink b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetUrl(), a.GetUrl());
            QCOMPARE(b.GetUrlTitle(), a.GetUrlTitle());
            QCOMPARE(b.GetLinkType(), CLxRichTextDataLink::LinkType_InApp);
            QCOMPARE(b.GetShownText(), QStringLiteral("my&nbsp;link"));
        }
        {
            CLxRichTextSnippetEmoji a(QStringLiteral("😀"), QStringLiteral("e.png"));
            a.SetDisplayImagePath(QStringLiteral("d.png"));
            CLxRichTextSnippetEmoji b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetImagePath(), a.GetImagePath());
            QCOMPARE(b.GetDisplayImagePath(), QStringLiteral("d.png"));
            QCOMPARE(b.GetEmojiText(), a.GetEmojiText());
        }
        {
            CLxRichTextDataImage a;
            a.SetImagePath(QStringLiteral("i.png"));
            CLxRichTextDataImage b;
            QVERIFY(b.FromProtoValue(viaJson(a.ToProtoValue())));
            QCOMPARE(b.GetImagePath(), QStringLiteral("i.png"));
            QCOMPARE(a.ToProtoValue()["type"].asInt32(), 2);
        }
    }

    void missingKeysReadAsEmpty() {
        core::CProtoValue v;
        v["type"] = core::CProtoValue(3);
        CLxRichTextSnippetUser user;
        user.SetUserData(5, QStringLiteral("old"));
        QVERIFY(user.FromProtoValue(v));
        QCOMPARE(user.GetUserID(), quint64(0));
        QCOMPARE(user.GetNickName(), QString());
        QCOMPARE(user.GetDisplayText(), QStringLiteral("0"));
        CLxRichTextDataLink link;
        QVERIFY(link.FromProtoValue(core::CProtoValue()));
        QCOMPARE(link.GetUrl(), QString());
        QCOMPARE(int(link.GetLinkType()), 0);
        CLxRichTextDataEmoji emoji;
        emoji.SetEmojiText(QStringLiteral("x"));
        QVERIFY(emoji.FromProtoValue(core::CProtoValue(QStringLiteral("not an object").toStdString())));
        QCOMPARE(emoji.GetEmojiText(), QString());
    }

    void escaping_data() {
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        QTest::newRow("tags") << "a<b>"
                              << "a&lt;b&gt;";
        QTest::newRow("slash") << "x/y"
                               << "x&#x2F;y";
        QTest::newRow("crlf") << "1\r\n2"
                              << "1<br>2";
        QTest::newRow("cr, lf, crcrlf") << "1\r2\n3\r\r\n4"
                                        << "1<br>2<br>3<br><br>4";
        QTest::newRow("amp first") << "&lt;"
                                   << "&amp;lt;";
        QTest::newRow("quotes backtick") << "\"'`"
                                         << "&quot;&apos;&#96;";
        QTest::newRow("cjk untouched") << "中文 Latin"
                                       << "中文 Latin";
    }
    void escaping() {
        QFETCH(QString, in);
        QFETCH(QString, out);
        QCOMPARE(CLxRichTextSnippetBase::ReplaceHtmlCharacters(in), out);
    }

    void zeroWidthSpaces_data() {
        QTest::addColumn<QString>("in");
        QTest::addColumn<QString>("out");
        const QString z(kZw);
        QTest::newRow("three blanks") << "a   b"
                                      << "a  " + z + " " + z + "b";
        QTest::newRow("single") << "a b"
                                << "a b";
        QTest::newRow("mixed kinds") << QStringLiteral("a \t\u00a0\u3000b")
                                     << "a \t" + z + "\u00a0" + z + "\u3000" + z + "b";
        QTest::newRow("two runs") << "  x  "
                                  << "  " + z + "x  " + z;
        QTest::newRow("none") << "abc"
                              << "abc";
    }
    void zeroWidthSpaces() {
        QFETCH(QString, in);
        QFETCH(QString, out);
        QCOMPARE(CLxRichTextSnippetBase::insertZeroWidthSpaces(in), out);
    }

    void shownTexts() {
        CLxRichTextSnippetText text(QStringLiteral("a   b<"));
        QCOMPARE(text.GetShownText(),
                 QStringLiteral("a  ") + kZw + QStringLiteral(" ") + kZw + QStringLiteral("b&lt;"));
        CLxRichTextSnippetPortfolio pf;
        pf.SetPortfolioData(1, QStringLiteral("Tech"), QStringLiteral("T1"));
        QCOMPARE(pf.GetShownText(), QStringLiteral("$Tech(T1)$"));
        pf.SetPortfolioData(1, QStringLiteral("%2<x>"), QStringLiteral("%1"));
        QCOMPARE(pf.GetShownText(), QStringLiteral("$%2&lt;x&gt;(%1)$"));
        CLxRichTextSnippetLink link;
        link.SetLinkData(QStringLiteral("my link"), QStringLiteral("u"), CLxRichTextDataLink::LinkType_Web);
        QCOMPARE(link.GetShownText(), QStringLiteral("my&nbsp;link"));
        link.SetLinkData(QString(), QStringLiteral("https://x/<y>"), CLxRichTextDataLink::LinkType_Web);
        QCOMPARE(link.GetShownText(), QStringLiteral("https:&#x2F;&#x2F;x&#x2F;&lt;y&gt;"));
        CLxRichTextSnippetUser user;
        user.SetUserData(42, QString());
        QCOMPARE(user.GetShownText(), QStringLiteral("42"));
        user.SetUserIDAndDisplayText(42, QStringLiteral("@a&b"));
        QCOMPARE(user.GetShownText(), QStringLiteral("@a&amp;b"));
        CLxRichTextSnippetStock stock;
        stock.SetStockData(1, QStringLiteral("S&P"));
        QCOMPARE(stock.GetShownText(), QStringLiteral("S&amp;P"));
        stock.SetStockIdAndDisplayText(1, QStringLiteral("$S&P$"));
        QCOMPARE(stock.GetShownText(), QStringLiteral("$S&amp;P$"));
    }

    void formatStyle() {
        const QString link = lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_text_link"));
        QCOMPARE(CLxRichTextSnippetBase::FormatStyleHtml(false, false, QStringLiteral("ct_text_link"),
                                                         QStringLiteral("BigTitle3")),
                 QStringLiteral(" style =' text-decoration:none;color:%1; font-token:BigTitle3; font-size:16px;'")
                     .arg(link));
        QCOMPARE(CLxRichTextSnippetBase::FormatStyleHtml(true, true, QString(), QString()),
                 QStringLiteral(" style =' font-weight:bold;text-decoration:underline;'"));
        QCOMPARE(CLxRichTextSnippetBase::FormatStyleHtml(false, false, QStringLiteral("no_such_key"),
                                                         QStringLiteral("body1")),
                 QStringLiteral(" style =' text-decoration:none;color:; font-token:body1; font-size:14px;'"));
        QCOMPARE(CLxRichTextSnippetBase::FormatStyleHtml(false, false, QString(), QStringLiteral("nope'<")),
                 QStringLiteral(" style =' text-decoration:none; font-token:nope;'"));
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        const QString dark = lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_text_link"));
        QVERIFY(dark != link);
        QVERIFY(CLxRichTextSnippetBase::FormatStyleHtml(false, false, QStringLiteral("ct_text_link"), QString())
                    .contains(QStringLiteral("color:%1;").arg(dark)));
    }

    void markup() {
        auto cfg = Cfg();
        const QString style = [&](const QString& key) {
            return CLxRichTextSnippetBase::FormatStyleHtml(false, false, key, QStringLiteral("BigTitle3"));
        }(QStringLiteral("ct_text_link"));

        CLxRichTextSnippetStock stock;
        stock.SetStockData(700, QStringLiteral("Tencent<"));
        stock.CreatHtml(3, cfg);
        QCOMPARE(stock.GetHtml(), QStringLiteral("<a href=\"3\"") + style + QStringLiteral(">Tencent&lt;</a>"));
        QVERIFY(stock.GetHtml().startsWith(QStringLiteral("<a href=\"3\" style =' text-decoration:none;color:")));

        CLxRichTextSnippetLink link;
        link.SetLinkData(QStringLiteral("a b"), QStringLiteral("https://x/"), CLxRichTextDataLink::LinkType_Web);
        link.CreatHtml(0, cfg);
        QCOMPARE(link.GetHtml(),
                 QStringLiteral("<a href=\"0\"  outline: none;") + style + QStringLiteral(">a&nbsp;b</a>"));

        CLxRichTextSnippetText text(QStringLiteral("hi"));
        text.CreatHtml(5, cfg);
        const QString textStyle = CLxRichTextSnippetBase::FormatStyleHtml(false, false, QStringLiteral("ct_text_h1"),
                                                                          QStringLiteral("BigTitle3"));
        QCOMPARE(text.GetHtml(),
                 QStringLiteral("<span  style=\"white-space: pre-wrap;\" ") + textStyle + QStringLiteral(">hi</span>"));

        CLxRichTextSnippetEmoticon emoticon(17, QStringLiteral("/e/17.png"));
        emoticon.CreatHtml(4, cfg);
        QCOMPARE(emoticon.GetHtml(),
                 QStringLiteral("<a href=\"4\"><span style=\"vertical-align : bottom;\"><img src=\"/e/17.png\"  "
                                "width='40' height='40' title=\"smallEmotion\"/></span></a>"));
        CLxRichTextSnippetEmoji emoji(QStringLiteral("😀"), QStringLiteral("/e/smile.png"));
        cfg->i32EmoticonWidth = 24;
        cfg->i32EmoticonHeight = 20;
        emoji.CreatHtml(6, cfg);
        QCOMPARE(emoji.GetHtml(), QStringLiteral("<a href=\"6\"><span style=\"vertical-align : bottom;\"><img "
                                                 "src=\"/e/smile.png\"  width='24' height='20'/></span></a>"));

        // The markup parses into what it says: the anchor, the colour, the size, the image.
        QTextDocument doc;
        doc.setHtml(stock.GetHtml() + text.GetHtml() + emoticon.GetHtml());
        QTextBlock block = doc.begin();
        auto it = block.begin();
        const QTextCharFormat f = it.fragment().charFormat();
        QCOMPARE(f.anchorHref(), QStringLiteral("3"));
        QCOMPARE(f.foreground().color(), lx_ui_res::Provider::instance()->color(QStringLiteral("ct_text_link")));
        QCOMPARE(f.font().pixelSize(), 16);
        QCOMPARE(f.fontUnderline(), false);
        QCOMPARE(it.fragment().text(), QStringLiteral("Tencent<"));
        bool sawEmotionTitle = false;
        for (; !it.atEnd(); ++it)
            if (it.fragment().charFormat().isImageFormat()) {
                QCOMPARE(it.fragment().charFormat().toolTip(), QStringLiteral("smallEmotion"));
                QCOMPARE(it.fragment().charFormat().toImageFormat().width(), 40.0);
                QCOMPARE(it.fragment().charFormat().anchorHref(), QStringLiteral("4"));
                sawEmotionTitle = true;
            }
        QVERIFY(sawEmotionTitle);
    }

    void configChoice() {
        lxtest::AssertRecorder rec;
        CLxRichTextSnippetStock stock;
        stock.SetStockData(1, QStringLiteral("S"));
        stock.CreatHtml(1, Cfg());
        const QString before = stock.GetHtml();
        stock.CreatHtml(2, nullptr);  // nothing happens
        QCOMPARE(stock.GetHtml(), before);
        // The snippet's own configuration wins over the widget's.
        auto own = Cfg();
        own->bBold = true;
        own->strStockColor = QStringLiteral("ct_text_red");
        stock.SetConfig(own);
        stock.CreatHtml(2, Cfg());
        QVERIFY(stock.GetHtml().contains(QStringLiteral("font-weight:bold;")));
        QVERIFY(stock.GetHtml().contains(lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_text_red"))));
        QCOMPARE(rec.count(), 0);

        CLxRichTextSnippetEmoji emoji(QStringLiteral("x"), QStringLiteral("x.png"));
        emoji.CreatHtml(0, nullptr);
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/RichText/LxRichTextSnippetEmoji"),
                        QStringLiteral("spConfig != nullptr")));
        QVERIFY(emoji.GetHtml().isEmpty());
        CLxRichTextSnippetEmoticon emoticon(1, QStringLiteral("x.png"));
        emoticon.CreatHtml(0, nullptr);
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/RichText/LxRichTextSnippetEmoticon"),
                        QStringLiteral("spConfig != nullptr")));
        QCOMPARE(rec.count(), 2);

        CLxRichTextSnippetBase base;
        base.CreatHtml(0, Cfg());
        QCOMPARE(base.GetHtml(), QString());
        QVERIFY(base.GetData() == nullptr);
        QCOMPARE(stock.GetData()->GetType(), 4);
    }

    // User text that looks like markup stays text in the document: no extra anchors, images or
    // entities appear, whichever way it comes in.
    void injection_data() {
        QTest::addColumn<QString>("evil");
        QTest::newRow("anchor") << R"(<a href="9">click</a>)";
        QTest::newRow("entity") << "&lt;a href=&quot;9&quot;&gt;";
        QTest::newRow("image") << R"(<img src="x.png">)";
        QTest::newRow("quote breakout") << R"(x" ><a href="9">y</a><img src="z)";
        QTest::newRow("single quote breakout") << R"(x' ><a href='9'>y</a><img src='z)";
        QTest::newRow("comment and cdata") << "<!-- x --><![CDATA[y]]>";
        QTest::newRow("arg markers") << "%1 %2 %3";
    }
    void injection() {
        QFETCH(QString, evil);
        auto cfg = Cfg();
        std::vector<std::shared_ptr<CLxRichTextSnippetBase>> list;
        list.push_back(std::make_shared<CLxRichTextSnippetText>(evil));
        auto user = std::make_shared<CLxRichTextSnippetUser>();
        user->SetUserData(1, evil);
        list.push_back(user);
        auto user2 = std::make_shared<CLxRichTextSnippetUser>();
        user2->SetUserData(2, QStringLiteral("n"));
        user2->SetDisplayText(evil);
        list.push_back(user2);
        auto stock = std::make_shared<CLxRichTextSnippetStock>();
        stock->SetStockIdAndDisplayText(1, evil);
        list.push_back(stock);
        auto pf = std::make_shared<CLxRichTextSnippetPortfolio>();
        pf->SetPortfolioData(1, evil, evil);
        list.push_back(pf);
        auto link = std::make_shared<CLxRichTextSnippetLink>();
        link->SetLinkData(evil, evil, CLxRichTextDataLink::LinkType_Web);
        list.push_back(link);
        auto link2 = std::make_shared<CLxRichTextSnippetLink>();
        link2->SetLinkData(QString(), evil, CLxRichTextDataLink::LinkType_Web);
        list.push_back(link2);
        list.push_back(std::make_shared<CLxRichTextSnippetEmoticon>(1, evil));
        list.push_back(std::make_shared<CLxRichTextSnippetEmoji>(evil, evil));
        list.push_back(std::make_shared<CLxRichTextSnippetImage>(evil));

        for (size_t i = 0; i < list.size(); ++i) {
            list[i]->CreatHtml(unsigned(i), cfg);
            const QString html = list[i]->GetHtml();
            const QStringList got = Structure(html);
            QStringList want;
            if (i > 0)
                want << QStringLiteral("a:%1").arg(i);
            if (i >= 7)
                want << QStringLiteral("img:") + evil;  // the path arrives whole, as a path
            QCOMPARE(got, want);
            if (i < 7) {
                QString shown = PlainOf(html);
                shown.replace(QChar(0xA0), QLatin1Char(' '));
                QVERIFY2(shown.contains(evil.trimmed()) || evil.contains(QLatin1String("  ")),
                         qPrintable(QStringLiteral("snippet %1 shows %2").arg(i).arg(shown)));
            }
        }
    }
};

QTEST_MAIN(TestRichTextData)
#include "tst_RichTextData.moc"
