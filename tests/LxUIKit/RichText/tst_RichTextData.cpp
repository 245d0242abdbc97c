// Rich-text items and snippets: text forms, shown sizes, value round trips, markup and escaping.

#include "RichTextTestUtil.h"

#include <LxStdUI/MultiLang.h>

#include <functional>

using namespace rt_test;

namespace {

constexpr uint64_t kMax64 = std::numeric_limits<uint64_t>::max();

std::shared_ptr<LxRichTextConfig> Cfg() { return std::make_shared<LxRichTextConfig>(); }

// Anchors and images that a document made from `html` holds, as "a:<href>" and "img:<name>",
// then the text it shows (without zero-width spaces, non-breaking spaces as blanks).
QStringList Parse(const QString& html) {
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
    return out << doc.toPlainText().remove(kZw).replace(QChar(0xA0), QLatin1Char(' '));
}

}  // namespace

class TestRichTextData : public QObject {
    Q_OBJECT
private slots:
    // The data items' own forms: plain text, and markup as written (unescaped).
    void dataForms() {
        CLxRichTextDataUser user;
        user.SetDisplayText(QStringLiteral("x"));
        user.SetUserData(7, QStringLiteral("Ann"));  // not hidden behind the older display text
        QCOMPARE(user.ToPlainText(), QStringLiteral("Ann"));
        QCOMPARE(CLxRichTextDataText(QStringLiteral("a<b>")).ToHtml(), QStringLiteral("<span>a<b></span>"));
        CLxRichTextDataEmotion emotion;
        emotion.SetEmoticonIdAndFilePath(17, QStringLiteral(":/e/17.png"));
        QCOMPARE(emotion.ToPlainText(), lxstdui_multi_lang::rich_text_data_emotion::textEmotion());
        QCOMPARE(emotion.ToHtml(), QStringLiteral("<img src=\":/e/17.png\" >"));
        CLxRichTextDataStock stock;
        stock.SetStockData(700, QStringLiteral("Tenvira"));
        QCOMPARE(stock.GetDisplayText(), QString());  // stored as given, nothing derived
        CLxRichTextDataLink link;
        link.SetLinkData(QStringLiteral("title"), QStringLiteral("https://a/"), CLxRichTextDataLink::LinkType_InApp);
        QCOMPARE(link.ToPlainText(), QStringLiteral("https://a/"));
        QCOMPARE(link.ToHtml(), QStringLiteral("<a href=\"https://a/\">title</a>"));
    }

    // A third of the picture, width capped at 300, from the display path when there is one (the
    // markup names the image path); unreadable pictures take no room.
    void imageShownSize_data() {
        QTest::addColumn<QSize>("origin");
        QTest::addColumn<QSize>("shown");
        QTest::addColumn<bool>("viaDisplayPath");
        QTest::newRow("third") << QSize(600, 300) << QSize(200, 100) << false;
        QTest::newRow("capped") << QSize(1200, 600) << QSize(300, 150) << false;
        QTest::newRow("thin, rounds up") << QSize(1201, 3) << QSize(300, 1) << false;
        QTest::newRow("exactly 300") << QSize(900, 90) << QSize(300, 30) << false;
        QTest::newRow("just over") << QSize(903, 903) << QSize(300, 300) << false;
        QTest::newRow("tiny") << QSize(1, 1) << QSize(0, 0) << false;
        QTest::newRow("unreadable") << QSize(-1, -1) << QSize(0, 0) << false;
        QTest::newRow("display path") << QSize(300, 150) << QSize(100, 50) << true;
    }
    void imageShownSize() {
        QFETCH(QSize, origin);
        QFETCH(QSize, shown);
        QFETCH(bool, viaDisplayPath);
        QTemporaryDir dir;
        const QString file = origin.isValid() ? MakeImage(dir, QStringLiteral("a.png"), origin)
                                              : lxtest::WriteFile(dir.filePath(QStringLiteral("a.png")), "junk");
        CLxRichTextDataImage image;
        image.SetImagePath(viaDisplayPath ? QStringLiteral("https://host/x%2.png") : file);
        image.SetDisplayImagePath(viaDisplayPath ? file : QString());
        QCOMPARE(image.GetImageOriginSize(), origin);
        QCOMPARE(image.GetImageShownSize(), shown);
        QCOMPARE(image.ToHtml(),
                 QStringLiteral("<img src=\"%1\" width=\"%2\" height=\"%3\">")
                     .arg(image.GetImagePath(), QString::number(shown.width()), QString::number(shown.height())));
    }

    // Every kind writes its kind and exactly its keys, ids unsigned and whole, shows its text
    // escaped (a second setter replacing the first), and survives ToProtoValue -> JSON text ->
    // FromProtoValue on a fresh snippet, which then shows the same; missing keys read as empty.
    void valueRoundTrip_data() {
        QTest::addColumn<Snippet>("from");
        QTest::addColumn<Snippet>("fresh");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<quint64>("id");  // the value of the kind's "...id" key
        QTest::addColumn<QString>("shown");
        auto row = [](const char* name, auto from, int type, const char* keys, quint64 id, const QString& shown) {
            using T = typename decltype(from)::element_type;
            QTest::newRow(name) << Snippet(from) << Snippet(std::make_shared<T>()) << type << QString(keys) << id
                                << shown;
        };
        const char* userKeys = "displaytext,nickname,type,userid";
        const char* stockKeys = "displaytext,stockid,stockname,type";
        auto image = std::make_shared<CLxRichTextSnippetImage>(QStringLiteral("i.png"));
        image->SetDisplayImagePath(QStringLiteral("d.png"));
        auto emoji = std::make_shared<CLxRichTextSnippetEmoji>(QStringLiteral("😀"), QStringLiteral("e.png"));
        emoji->SetDisplayImagePath(QStringLiteral("d.png"));
        row("text", Text(QStringLiteral("a   b<混合")), 1, "text,type", 0,
            "a  " + QString(kZw) + " " + kZw + "b&lt;混合");
        row("image", image, 2, "displayimagepath,imagepath,type", 0, "");
        row("user", User(QStringLiteral("<b>Bob</b>"), 5), 3, userKeys, 5, "&lt;b&gt;Bob&lt;&#x2F;b&gt;");
        row("user, id only", User(QString(), kMax64), 3, userKeys, kMax64, "18446744073709551615");
        row("user, display", User(QStringLiteral("n"), kMax64 - 1, QStringLiteral("@a&b中文")), 3, userKeys, kMax64 - 1,
            "@a&amp;b中文");
        row("stock", Stock(QStringLiteral("S&P"), 9000000000ull), 4, stockKeys, 9000000000ull, "S&amp;P");
        row("stock, display", Stock(QStringLiteral("A"), 1, QStringLiteral("$A&B$")), 4, stockKeys, 1, "$A&amp;B$");
        row("portfolio", Portfolio(QStringLiteral("%2<x>"), QStringLiteral("%1"), 77), 5,
            "portfoliocode,portfolioid,portfolioname,type", 77, "$%2&lt;x&gt;(%1)$");
        row("emoticon", std::make_shared<CLxRichTextSnippetEmoticon>(4000000000u, QStringLiteral(":/e/17.png")), 6,
            "emotionid,emotionpath,type", 4000000000u, "");
        row("link", Link(QStringLiteral("my link"), QStringLiteral("u"), CLxRichTextDataLink::LinkType_Download), 7,
            "linktype,type,url,urltitle", 0, "my&nbsp;link");
        row("link, no title", Link(QString(), QStringLiteral("https://x/<y>")), 7, "linktype,type,url,urltitle", 0,
            "https:&#x2F;&#x2F;x&#x2F;&lt;y&gt;");
        row("emoji", emoji, 8, "displayimagepath,emojitext,imagepath,type", 0, "");
    }
    void valueRoundTrip() {
        QFETCH(Snippet, from);
        QFETCH(Snippet, fresh);
        QFETCH(int, type);
        QFETCH(QString, keys);
        QFETCH(quint64, id);
        QFETCH(QString, shown);
        QCOMPARE(from->GetShownText(), shown);
        const core::CProtoValue v = from->GetData()->ToProtoValue();
        QCOMPARE(from->GetData()->GetType(), type);
        QCOMPARE(v["type"].asInt32(), type);
        QStringList names;
        for (const std::string& name : v.json().getMemberNames()) {
            names << QString::fromStdString(name);
            if (names.last().endsWith(QLatin1String("id"))) {
                QVERIFY(v[name.c_str()].json().isUInt64());
                QCOMPARE(quint64(v[name.c_str()].asUInt64()), id);
            }
        }
        QCOMPARE(names.join(QLatin1Char(',')), keys);
        core::CProtoValue back;
        QVERIFY(back.fromJsonString(v.toJsonString()));
        QVERIFY(fresh->GetData()->FromProtoValue(back));
        QCOMPARE(QString::fromStdString(fresh->GetData()->ToProtoValue().toJsonString()),
                 QString::fromStdString(v.toJsonString()));
        QCOMPARE(fresh->GetShownText(), shown);
        // Reading a value without the keys (not even an object) leaves nothing of the old data.
        QVERIFY(fresh->GetData()->FromProtoValue(core::CProtoValue(std::string("not an object"))));
        const core::CProtoValue empty = fresh->GetData()->ToProtoValue();
        for (const std::string& name : empty.json().getMemberNames()) {
            const std::string value = empty[name.c_str()].asString();
            QVERIFY2(name == "type" || value.empty() || value == "0", name.c_str());
        }
    }

    // Escaping for text between tags, and the zero-width spaces that let runs of blanks break.
    void textTransforms() {
        const QString z(kZw);
        const std::tuple<bool, QString, QString> rows[] = {
            // zero-width spaces or escaping, in, out
            {false, "a<b>/\"'`", "a&lt;b&gt;&#x2F;&quot;&apos;&#96;"},
            {false, "&lt;", "&amp;lt;"},  // & first
            {false, "1\r\n2\r3\n4\r\r\n5", "1<br>2<br>3<br>4<br><br>5"},
            {false, "中文 Latin", "中文 Latin"},
            {true, "a   b", "a  " + z + " " + z + "b"},
            {true, "a b", "a b"},
            {true, QStringLiteral("a \t\u00a0\u3000b"), "a \t" + z + "\u00a0" + z + "\u3000" + z + "b"},
            {true, "  x  ", "  " + z + "x  " + z},
        };
        for (const auto& [zeroWidth, in, out] : rows)
            QCOMPARE(zeroWidth ? CLxRichTextSnippetBase::insertZeroWidthSpaces(in)
                               : CLxRichTextSnippetBase::ReplaceHtmlCharacters(in),
                     out);
    }

    // The exact style and markup of each template kind; a document reads the style's colour and
    // size.
    void markup() {
        auto styleOf = [](bool bold, bool underline, const char* key, const char* token) {
            return CLxRichTextSnippetBase::FormatStyleHtml(bold, underline, QLatin1String(key), QLatin1String(token));
        };
        auto style = [&](const char* key) { return styleOf(false, false, key, "BigTitle3"); };
        QCOMPARE(style("ct_text_link"),
                 QStringLiteral(" style =' text-decoration:none;color:%1; font-token:BigTitle3; font-size:16px;'")
                     .arg(lx_ui_res::Provider::instance()->colorString(QStringLiteral("ct_text_link"))));
        QCOMPARE(styleOf(true, true, "", ""), QStringLiteral(" style =' font-weight:bold;text-decoration:underline;'"));
        QCOMPARE(styleOf(false, false, "no_such_key", "body1"),
                 QStringLiteral(" style =' text-decoration:none;color:; font-token:body1; font-size:14px;'"));
        QCOMPARE(styleOf(false, false, "", "nope'<"),
                 QStringLiteral(" style =' text-decoration:none; font-token:nope;'"));

        auto cfg = Cfg();
        auto html = [&](const Snippet& s, unsigned index) {
            s->CreatHtml(index, cfg);
            return s->GetHtml();
        };
        const Snippet stock = Stock(QStringLiteral("Tenvira<"));
        QCOMPARE(html(stock, 3), "<a href=\"3\"" + style("ct_text_link") + ">Tenvira&lt;</a>");
        QCOMPARE(html(Link(QStringLiteral("a b"), QStringLiteral("https://x/")), 0),
                 "<a href=\"0\"  outline: none;" + style("ct_text_link") + ">a&nbsp;b</a>");
        QCOMPARE(html(Text(QStringLiteral("hi")), 5),
                 "<span  style=\"white-space: pre-wrap;\" " + style("ct_text_h1") + ">hi</span>");
        QCOMPARE(html(std::make_shared<CLxRichTextSnippetEmoticon>(17, QStringLiteral("/e/17.png")), 4),
                 QStringLiteral("<a href=\"4\"><span style=\"vertical-align : bottom;\"><img src=\"/e/17.png\"  "
                                "width='40' height='40' title=\"smallEmotion\"/></span></a>"));
        cfg->i32EmoticonWidth = 24;
        cfg->i32EmoticonHeight = 20;
        QCOMPARE(
            html(std::make_shared<CLxRichTextSnippetEmoji>(QStringLiteral("😀"), QStringLiteral("/e/smile.png")), 6),
            QStringLiteral("<a href=\"6\"><span style=\"vertical-align : bottom;\"><img "
                           "src=\"/e/smile.png\"  width='24' height='20'/></span></a>"));
        QTextDocument doc;
        doc.setHtml(stock->GetHtml());
        const QTextCharFormat f = doc.begin().begin().fragment().charFormat();
        QCOMPARE(f.foreground().color(), lx_ui_res::Provider::instance()->color(QStringLiteral("ct_text_link")));
        QCOMPARE(f.font().pixelSize(), 16);
        QVERIFY(!f.fontUnderline());
        // Without a configuration nothing happens; the snippet's own one wins over the widget's;
        // picture tokens need one for their size and assert without.
        lxtest::AssertRecorder rec;
        stock->CreatHtml(2, nullptr);
        QCOMPARE(stock->GetHtml(), "<a href=\"3\"" + style("ct_text_link") + ">Tenvira&lt;</a>");
        auto own = Cfg();
        own->bBold = true;
        stock->SetConfig(own);
        stock->CreatHtml(2, Cfg());
        QVERIFY(stock->GetHtml().contains(QStringLiteral("font-weight:bold;")));
        CLxRichTextSnippetEmoji(QStringLiteral("x"), QStringLiteral("x.png")).CreatHtml(0, nullptr);
        CLxRichTextSnippetEmoticon(1, QStringLiteral("x.png")).CreatHtml(0, nullptr);
        QVERIFY(rec.has(QStringLiteral("RichText/LxRichTextSnippetEmoji"), QStringLiteral("spConfig != nullptr")));
        QVERIFY(rec.has(QStringLiteral("RichText/LxRichTextSnippetEmoticon"), QStringLiteral("spConfig != nullptr")));
        QCOMPARE(rec.count(), 2);
    }

    // User text that looks like markup stays text in the document: no extra anchors, images or
    // entities appear, whichever way it comes in.
    void injection_data() {
        QTest::addColumn<QString>("evil");
        QTest::newRow("anchor") << R"(<a href="9">click</a>)";
        QTest::newRow("entity") << "&lt;a href=&quot;9&quot;&gt;";
        QTest::newRow("quote breakout") << R"(x" ><a href="9">y</a><img src="z)";
        QTest::newRow("single quote breakout") << R"(x' ><a href='9'>y</a><img src='z)";
        QTest::newRow("arg markers") << "%1 %2 %3";
    }
    void injection() {
        QFETCH(QString, evil);
        auto user2 = User(QStringLiteral("n"), 2);
        user2->SetDisplayText(evil);
        // Text-like snippets first (they show the text), then the picture ones (they hold it as a path).
        const Snippet list[] = {Text(evil),
                                User(evil),
                                user2,
                                Stock(QString(), 1, evil),
                                Portfolio(evil, evil),
                                Link(evil, evil),
                                Link(QString(), evil),
                                std::make_shared<CLxRichTextSnippetEmoticon>(1, evil),
                                std::make_shared<CLxRichTextSnippetEmoji>(evil, evil),
                                std::make_shared<CLxRichTextSnippetImage>(evil)};
        for (int i = 0; i < 10; ++i) {
            list[i]->CreatHtml(unsigned(i), Cfg());
            QStringList got = Parse(list[i]->GetHtml());
            const QString shown = got.takeLast();
            QStringList want;
            if (i > 0)
                want << QStringLiteral("a:%1").arg(i);
            if (i >= 7)
                want << QStringLiteral("img:") + evil;  // the path arrives whole, as a path
            QCOMPARE(got, want);
            QVERIFY2(i >= 7 || shown.contains(evil.trimmed()) || evil.contains(QLatin1String("  ")),
                     qPrintable(QStringLiteral("snippet %1 shows %2").arg(i).arg(shown)));
        }
    }

    // Each kind reads its numbers with the reader of its field's width (the readers' own edges are
    // pinned in tst_ProtoValue): out of range saturates (or reads 0) instead of ending the process.
    void hostileNumbers_data() {
        QTest::addColumn<QString>("json");
        QTest::addColumn<quint64>("id");  // the kind's identifier after reading
        QTest::newRow("emotion, huge") << R"({"type":6,"emotionid":1e300})" << quint64(UINT32_MAX);
        QTest::newRow("emotion, negative") << R"({"type":6,"emotionid":-3})" << quint64(0);
        QTest::newRow("link, past int64") << R"({"type":7,"linktype":9223372036854775808})" << quint64(INT32_MAX);
        QTest::newRow("link, very negative") << R"({"type":7,"linktype":-1e19})" << quint64(qint64(INT32_MIN));
        QTest::newRow("stock, huge") << R"({"type":4,"stockid":1e300})" << quint64(kMax64);
        QTest::newRow("user, above int64")
            << R"({"type":3,"userid":9300000000000000000})" << quint64(9300000000000000000ULL);
        QTest::newRow("portfolio, string") << R"({"type":5,"portfolioid":"12"})" << quint64(0);
        QTest::newRow("portfolio, object") << R"({"type":5,"portfolioid":{"a":1},"portfolioname":[1]})" << quint64(0);
    }
    void hostileNumbers() {
        QFETCH(QString, json);
        QFETCH(quint64, id);
        core::CProtoValue v;
        QVERIFY(v.fromJsonString(json.toStdString()));
        std::shared_ptr<ILxRichTextData> data;
        quint64 got = 0;
        auto read = [&](auto p, auto id) {
            QVERIFY(p->FromProtoValue(v));
            got = quint64(id(*p));
            data = p;
        };
        switch (v["type"].asInt32()) {
        case 3: read(std::make_shared<CLxRichTextSnippetUser>(), std::mem_fn(&CLxRichTextDataUser::GetUserID)); break;
        case 4:
            read(std::make_shared<CLxRichTextSnippetStock>(), std::mem_fn(&CLxRichTextDataStock::GetStockID));
            break;
        case 5:
            read(std::make_shared<CLxRichTextSnippetPortfolio>(),
                 std::mem_fn(&CLxRichTextDataPortfolio::GetPortfolioID));
            break;
        case 6:
            read(std::make_shared<CLxRichTextSnippetEmoticon>(), std::mem_fn(&CLxRichTextDataEmotion::GetEmoticonID));
            break;
        default:
            read(std::make_shared<CLxRichTextSnippetLink>(),
                 [](const CLxRichTextDataLink& l) { return qint64(l.GetLinkType()); });
            break;
        }
        QCOMPARE(got, id);
        QVERIFY(!data->ToProtoValue().toJsonString().empty());
    }

    // Text stays text: characters a document reserves for frames and objects never open a block
    // or an object, one anchor stays one anchor, and a token with nothing to show shows its
    // fallback, so its anchor exists.
    void reservedAndBlankText_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");  // what a text-like token shows; empty: its fallback
        const auto u = [](uint cp) { return QString::fromUcs4(&cp, 1); };
        QTest::newRow("frame end") << "x" + u(0xFDD1) + "y"
                                   << "xy";
        QTest::newRow("other non-characters") << u(0xFDEF) + "a" + u(0xFFFE) + u(0xFFFF) + u(0x1FFFF) << "a";
        QTest::newRow("object replacement") << "o" + u(0xFFFC) + "k"
                                            << "ok";
        QTest::newRow("paragraph separator") << "a" + u(0x2029) + "b"
                                             << "a" + u(0x2028) + "b";
        QTest::newRow("line separator") << "a" + u(0x2028) + "b"
                                        << "a" + u(0x2028) + "b";
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("blanks") << "  \t " << QString();
        QTest::newRow("new lines") << "\r\n\n" << QString();
        QTest::newRow("zero width") << u(0x200B) + u(0xFEFF) << QString();
        QTest::newRow("markers only") << u(0xFDD0) + u(0xFDD1) + u(0xFFFC) << QString();
    }
    void reservedAndBlankText() {
        QFETCH(QString, text);
        QFETCH(QString, shown);
        auto displayed = User(QStringLiteral("nick"), 6, text);
        CLxRichText w;
        w.SetRichTextData({Text(text), User(text, 77), Stock(text, 88), Link(text, QString()), displayed,
                           Stock(QStringLiteral("name"), 9, text)});
        QTextDocument* doc = w.document();
        QCOMPARE(doc->blockCount(), 1);
        QVERIFY(doc->rootFrame()->childFrames().isEmpty());
        QMap<QString, QString> anchors;
        for (auto it = doc->begin().begin(); !it.atEnd(); ++it) {
            const QTextFragment f = it.fragment();
            QCOMPARE(f.charFormat().objectType(), int(QTextFormat::NoObject));
            if (f.charFormat().isAnchor())
                anchors[f.charFormat().anchorHref()] += f.text().replace(QChar::Nbsp, QLatin1Char(' '));
        }
        const QString plain = doc->toPlainText();
        for (ushort reserved : {0xFDD0, 0xFDD1, 0xFFFC, 0xFFFE, 0x2029})
            QVERIFY(!plain.contains(QChar(reserved)));
        const QString fallbacks[] = {QStringLiteral("77"), QStringLiteral("88"),
                                     QString::fromLatin1(CLxRichTextSnippetLink::kFallbackLinkText),
                                     QStringLiteral("nick"), QStringLiteral("name")};
        QCOMPARE(anchors.keys(), QStringList({"1", "2", "3", "4", "5"}));
        for (int i = 1; i <= 5; ++i)
            QCOMPARE(anchors.value(QString::number(i)), shown.isEmpty() ? fallbacks[i - 1] : shown);
    }
};

QTEST_MAIN(TestRichTextData)
#include "tst_RichTextData.moc"
