// The rich-text widget: clicks and hovers per snippet, touch taps, selection and copy, theme
// changes, limits and the size answers.

#include "LxTestSupport.h"

#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/RichText/LxRichText.h>
#include <LxUIKit/RichText/LxRichTextLayout.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoji.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>
#include <LxUIKit/RichText/LxRichTextSnippetLink.h>
#include <LxUIKit/RichText/LxRichTextSnippetStock.h>
#include <LxUIKit/RichText/LxRichTextSnippetText.h>
#include <LxUIKit/RichText/LxRichTextSnippetUser.h>

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QGesture>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextLayout>
#include <QVBoxLayout>
#include <QtTest>

using Snippet = std::shared_ptr<CLxRichTextSnippetBase>;

namespace {

const QChar kZw(0x200B);

std::shared_ptr<CLxRichTextSnippetText> Text(const QString& s) { return std::make_shared<CLxRichTextSnippetText>(s); }
std::shared_ptr<CLxRichTextSnippetStock> Stock(const QString& name, uint64_t id = 700) {
    auto s = std::make_shared<CLxRichTextSnippetStock>();
    s->SetStockData(id, name);
    return s;
}
std::shared_ptr<CLxRichTextSnippetUser> User(const QString& nick, uint64_t id = 42) {
    auto s = std::make_shared<CLxRichTextSnippetUser>();
    s->SetUserData(id, nick);
    return s;
}

// The middle of the first character of the snippet with that href, in widget coordinates.
QPoint PointOf(CLxRichText& w, int href) {
    QTextDocument* doc = w.document();
    doc->documentLayout()->documentSize();
    for (QTextBlock b = doc->begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment f = it.fragment();
            if (f.charFormat().anchorHref() != QString::number(href))
                continue;
            const int rel = f.position() - b.position();
            const QTextLine line = b.layout()->lineForTextPosition(rel);
            if (!line.isValid())
                return QPoint(-1, -1);
            const qreal x = (line.cursorToX(rel) + line.cursorToX(rel + 1)) / 2;
            const qreal y = b.layout()->position().y() + line.y() + line.height() / 2;
            return (QPointF(x, y) + QPointF(w.contentsRect().topLeft())).toPoint();
        }
    return QPoint(-1, -1);
}

QString MakePng(const QTemporaryDir& dir, const QString& name, QColor color) {
    QImage img(120, 120, QImage::Format_ARGB32);
    img.fill(color);
    const QString path = dir.filePath(name);
    img.save(path);
    return path;
}

QColor ColorOfHref(CLxRichText& w, int href) {
    QTextDocument* doc = w.document();
    for (QTextBlock b = doc->begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it)
            if (it.fragment().charFormat().anchorHref() == QString::number(href))
                return it.fragment().charFormat().foreground().color();
    return QColor();
}

void SendMouse(QWidget* w, QEvent::Type type, QPoint pos, Qt::MouseEventSource source = Qt::MouseEventNotSynthesized) {
    QMouseEvent e(type, pos, w->mapTo(w->window(), pos), w->mapToGlobal(pos),
                  type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                  type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier, source);
    QApplication::sendEvent(w, &e);
}

class PressCounter : public QWidget {
public:
    int i32Presses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++i32Presses; }
};

}  // namespace

class TestRichText : public QObject {
    Q_OBJECT
private slots:
    void init() { lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light); }

    void anchorsAndClicks() {
        PressCounter parent;
        parent.resize(400, 200);
        auto* w = new CLxRichText(&parent);
        w->setGeometry(0, 0, 400, 100);
        auto text = Text(QStringLiteral("Buy "));
        auto stock = Stock(QStringLiteral("Tencent"));
        auto user = User(QStringLiteral("Ann"));
        w->SetRichTextData({text, stock, user});
        parent.show();
        QVERIFY(QTest::qWaitForWindowExposed(&parent));

        QStringList hrefs;
        for (auto it = w->document()->begin().begin(); !it.atEnd(); ++it)
            hrefs << it.fragment().charFormat().anchorHref();
        hrefs.removeDuplicates();
        QCOMPARE(hrefs, QStringList({QString(), QStringLiteral("1"), QStringLiteral("2")}));

        QSignalSpy clicked(w, &CLxRichText::Clicked);
        QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, PointOf(*w, 2));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(clicked.at(0).at(0).value<Snippet>(), Snippet(user));
        QCOMPARE(parent.i32Presses, 0);  // accepted by default

        // A snippet that does not accept presses lets them through to the parent.
        stock->SetAcceptMousePress(false);
        QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, PointOf(*w, 1));
        QCOMPARE(clicked.count(), 2);
        QCOMPARE(clicked.at(1).at(0).value<Snippet>(), Snippet(stock));
        QCOMPARE(parent.i32Presses, 1);

        // Plain text and empty space are no snippets.
        QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, QPoint(3, PointOf(*w, 1).y()));
        QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, QPoint(390, 90));
        QCOMPARE(clicked.count(), 2);
    }

    void hoverAndCursor() {
        QTemporaryDir dir;
        CLxRichText w;
        w.resize(400, 80);
        auto emoticon =
            std::make_shared<CLxRichTextSnippetEmoticon>(17, MakePng(dir, QStringLiteral("e.png"), Qt::red));
        auto stock = Stock(QStringLiteral("AAPL"));
        w.SetRichTextData({Text(QStringLiteral("hi ")), emoticon, Text(QStringLiteral(" ")), stock});
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QSignalSpy hovered(&w, &CLxRichText::Hovered);

        QTest::mouseMove(&w, PointOf(w, 3));
        QTRY_VERIFY(hovered.count() >= 1);
        QCOMPARE(hovered.last().at(0).value<Snippet>(), Snippet(stock));
        QCOMPARE(w.cursor().shape(), Qt::PointingHandCursor);

        QTest::mouseMove(&w, PointOf(w, 1));
        QTRY_COMPARE(hovered.last().at(0).value<Snippet>(), Snippet(emoticon));
        QCOMPARE(w.cursor().shape(), Qt::ArrowCursor);  // emoticons keep the arrow

        QTest::mouseMove(&w, QPoint(2, PointOf(w, 3).y()));
        QTRY_VERIFY(!hovered.last().at(0).value<Snippet>());
        QCOMPARE(w.cursor().shape(), Qt::ArrowCursor);

        // Leaving after a token was hovered reports no snippet.
        QTest::mouseMove(&w, PointOf(w, 3));
        QTRY_COMPARE(hovered.last().at(0).value<Snippet>(), Snippet(stock));
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&w, &leave);
        QVERIFY(!hovered.last().at(0).value<Snippet>());
    }

    void touchTaps() {
        CLxRichText w;
        w.resize(400, 80);
        auto stock = Stock(QStringLiteral("AAPL"));
        w.SetRichTextData({Text(QStringLiteral("see ")), stock});
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QSignalSpy clicked(&w, &CLxRichText::Clicked);
        const QPoint at = PointOf(w, 1);

        // A tap reports on release, not on press.
        SendMouse(&w, QEvent::MouseButtonPress, at, Qt::MouseEventSynthesizedByQt);
        QCOMPARE(clicked.count(), 0);
        SendMouse(&w, QEvent::MouseButtonRelease, at, Qt::MouseEventSynthesizedByQt);
        QCOMPARE(clicked.count(), 1);

        // A drag is no tap.
        SendMouse(&w, QEvent::MouseButtonPress, at, Qt::MouseEventSynthesizedBySystem);
        SendMouse(&w, QEvent::MouseButtonRelease, at + QPoint(QApplication::startDragDistance() + 2, 0),
                  Qt::MouseEventSynthesizedBySystem);
        QCOMPARE(clicked.count(), 1);

        // Neither is a long press.
        const int old = QTapAndHoldGesture::timeout();
        QTapAndHoldGesture::setTimeout(30);
        SendMouse(&w, QEvent::MouseButtonPress, at, Qt::MouseEventSynthesizedByQt);
        QTest::qWait(60);
        SendMouse(&w, QEvent::MouseButtonRelease, at, Qt::MouseEventSynthesizedByQt);
        QTapAndHoldGesture::setTimeout(old);
        QCOMPARE(clicked.count(), 1);

        // A mouse reports on press.
        SendMouse(&w, QEvent::MouseButtonPress, at, Qt::MouseEventNotSynthesized);
        QCOMPARE(clicked.count(), 2);
        SendMouse(&w, QEvent::MouseButtonRelease, at, Qt::MouseEventNotSynthesized);
        QCOMPARE(clicked.count(), 2);
    }

    void textWithEmotionIdAndMarking() {
        CLxRichText w;
        auto emoticon = std::make_shared<CLxRichTextSnippetEmoticon>(17, QStringLiteral("/no/such.png"));
        auto emoji = std::make_shared<CLxRichTextSnippetEmoji>(QStringLiteral("😀"), QStringLiteral("/no/e.png"));
        w.SetRichTextData({Text(QStringLiteral("hi")), emoticon});
        QCOMPARE(w.textWithEmotionID(), QStringLiteral("hi#emotion_17#"));
        w.SetRichTextData({Text(QStringLiteral("a")), nullptr, emoji, User(QString(), 9)});
        QCOMPARE(w.textWithEmotionID(), QStringLiteral("a😀9"));

        // Emoticon images become emoticon objects without a tool tip; emoji stay images.
        w.SetRichTextData({emoticon, emoji});
        int emoticons = 0, images = 0;
        for (auto it = w.document()->begin().begin(); !it.atEnd(); ++it) {
            const QTextCharFormat f = it.fragment().charFormat();
            if (f.objectType() == CLxRichText::kEmotionObjectType) {
                ++emoticons;
                QVERIFY(f.toolTip().isEmpty());
                QCOMPARE(f.anchorHref(), QStringLiteral("0"));
            } else if (f.objectType() == QTextFormat::ImageObject) {
                ++images;
            }
        }
        QCOMPARE(emoticons, 1);
        QCOMPARE(images, 1);
    }

    void themeChangeRecolours() {
        CLxRichText w;
        w.resize(300, 60);
        w.SetRichTextData({Text(QStringLiteral("x ")), Stock(QStringLiteral("S"))});
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        QCOMPARE(ColorOfHref(w, 1), res->color(QStringLiteral("ct_text_link")));
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QCOMPARE(ColorOfHref(w, 1), res->color(QStringLiteral("ct_text_link")));
        QVERIFY(w.text().contains(res->colorString(QStringLiteral("ct_text_h1"))));

        // A hidden widget catches up when it is read or shown.
        w.hide();
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
        QCOMPARE(ColorOfHref(w, 1), res->color(QStringLiteral("ct_text_link")));

        // The painted pixels follow too: light text on the dark background.
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const QImage img = w.grab().toImage();
        bool bLight = false;
        for (int x = 0; x < 40 && !bLight; ++x)
            for (int y = 0; y < img.height() && !bLight; ++y)
                bLight = QColor(img.pixel(x, y)).lightness() > 180 && img.pixel(x, y) != QColor(Qt::white).rgb();
        QVERIFY(bLight);

        // A new configuration is applied at once.
        auto cfg = std::make_shared<LxRichTextConfig>();
        cfg->strStockColor = QStringLiteral("ct_text_red");
        w.SetConfig(cfg);
        QCOMPARE(ColorOfHref(w, 1), res->color(QStringLiteral("ct_text_red")));
    }

    void lineLimitAndMaxHeight() {
        CLxRichText w;
        w.resize(200, 300);
        w.SetRichTextData(
            {Text(QStringLiteral("one two three four five six seven eight nine ten eleven twelve "
                                 "thirteen fourteen fifteen sixteen seventeen eighteen"))});
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        const int all = w.GetLineCount();
        QVERIFY(all > 3);
        QCOMPARE(w.GetLineCountForWidth(200, false), all);
        w.SetMaxLine(2);
        QCOMPARE(w.GetLineCount(), 2);
        QCOMPARE(w.GetLineCountForWidth(200, true), 2);
        QCOMPARE(w.GetLineCountForWidth(200, false), all);
        QVERIFY(!w.GetLayout()->IsAllTextShown());
        w.ReSetMaxHeight();
        const QTextLine second = w.GetTextLine(1);
        QCOMPARE(w.maximumHeight(), qRound(second.y() + second.height()));
        QCOMPARE(w.heightForWidth(200), qCeil(second.y() + second.height()));
        QCOMPARE(w.FindLastVisibleLine(), 1);
        QCOMPARE(w.SizeForWidth(200, false).height() > w.SizeForWidth(200, true).height(), true);
        w.SetMaxLine(0);
        QCOMPARE(w.GetLineCount(), all);
    }

    // Repeated questions at one width are answered without laying out again; a shown widget is
    // measured at other widths without disturbing what it shows.
    void sizeAnswersAreCached() {
        lxtest::AssertRecorder rec;
        QWidget host;
        auto* w = new CLxRichText(&host);
        w->SetMaxLine(3);
        w->SetRichTextData({Text(QStringLiteral("word ").repeated(60)), Stock(QStringLiteral("S"))});
        const int h360 = w->heightForWidth(360);
        const int passes = w->GetLayout()->GetLayoutPassCount();
        for (int i = 0; i < 10; ++i)
            QCOMPARE(w->heightForWidth(360), h360);
        QCOMPARE(w->GetLayout()->GetLayoutPassCount(), passes);
        // Shown at that width: painting does not lay out again.
        w->setGeometry(0, 0, 360, h360);
        host.resize(400, 200);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QCOMPARE(w->GetLayout()->GetLayoutPassCount(), passes);
        QCOMPARE(w->GetLineCount(), 3);
        // Another width: measured elsewhere, the shown lines stay.
        const int h120 = w->heightForWidth(120);
        QCOMPARE(h120, h360);  // three lines either way
        QCOMPARE(w->document()->textWidth(), 360.0);
        QCOMPARE(w->GetLayout()->GetLayoutPassCount(), passes);
        const QSize sh = w->sizeHint();
        QCOMPARE(w->sizeHint(), sh);
        QVERIFY(sh.width() <= QFontMetrics(w->font()).horizontalAdvance(QLatin1Char('x')) * 80);
        QVERIFY(w->minimumSizeHint().height() <= sh.height());
        // New content forgets old answers.
        w->SetRichTextData({Text(QStringLiteral("short"))});
        QVERIFY(w->heightForWidth(360) < h360);
        QCOMPARE(rec.count(), 0);
        QCOMPARE(w->SizeForWidth(0), QSize());
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/RichText/LxRichText"), QStringLiteral("i32Width > 0")));
    }

    void selectionAndCopy() {
        QTemporaryDir dir;
        CLxRichText w;
        w.resize(400, 80);
        auto text = Text(QStringLiteral("a   b "));
        auto stock = Stock(QStringLiteral("AAPL"));
        auto emoticon = std::make_shared<CLxRichTextSnippetEmoticon>(3, MakePng(dir, QStringLiteral("e.png"), Qt::red));
        auto tail = Text(QStringLiteral(" end"));
        w.SetRichTextData({text, stock, emoticon, tail});
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        // The blanks are kept (pre-wrap), with zero-width spaces to let them break.
        QVERIFY(w.document()->toPlainText().startsWith(QStringLiteral("a  ") + kZw + QStringLiteral(" ") + kZw + "b"));

        QVERIFY(!w.hasSelectedText());
        w.SetSelection(0, 3);
        QCOMPARE(w.GetSelectedText(), QStringLiteral("a  "));
        QCOMPARE(w.selectionStart(), 0);
        QCOMPARE(w.selectionEnd(), 3);
        QCOMPARE(w.GetSelDataItems(), CLxRichText::SnippetList({text}));
        const int stockStart = w.document()->toPlainText().indexOf(QStringLiteral("AAPL"));
        w.SetSelection(stockStart - 1, 6);  // the blank before, the stock and the emoticon
        QCOMPARE(w.GetSelDataItems(), CLxRichText::SnippetList({text, stock, emoticon}));
        QVERIFY(!w.IsAllSelected());
        w.SelectAll();
        QVERIFY(w.IsAllSelected());
        QCOMPARE(w.GetSelDataItems().size(), size_t(4));

        // Keyboard copy: readable text, the emoticon as its word.
        w.setFocus();
        QGuiApplication::clipboard()->clear();
        QTest::keyClick(&w, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 QStringLiteral("a   b AAPL") + emoticon->ToPlainText() + QStringLiteral(" end"));
        w.ClearSelection();
        QVERIFY(!w.hasSelectedText());

        // Mouse drag selects; with selection disabled it does not.
        const QPoint from(1, PointOf(w, 1).y());
        auto drag = [&] {
            SendMouse(&w, QEvent::MouseButtonPress, from);
            SendMouse(&w, QEvent::MouseMove, (from + PointOf(w, 1)) / 2);
            SendMouse(&w, QEvent::MouseMove, PointOf(w, 1));
            SendMouse(&w, QEvent::MouseButtonRelease, PointOf(w, 1));
        };
        drag();
        QVERIFY(w.hasSelectedText());
        QVERIFY(w.GetSelectedText().startsWith(QLatin1Char('a')));
        w.SetSelectEnable(false);
        QVERIFY(!w.hasSelectedText());
        drag();
        QVERIFY(!w.hasSelectedText());
    }

    // User text never turns into anchors of the widget.
    void noInjectedTokens() {
        CLxRichText w;
        w.resize(400, 80);
        w.SetRichTextData(
            {Text(QStringLiteral("<a href=\"0\">fake</a> &lt;b&gt;")), User(QStringLiteral("<a href='0'>u</a>"))});
        w.show();
        QVERIFY(QTest::qWaitForWindowExposed(&w));
        QCOMPARE(w.document()->toPlainText().remove(kZw),
                 QStringLiteral("<a href=\"0\">fake</a> &lt;b&gt;<a href='0'>u</a>"));
        QSignalSpy clicked(&w, &CLxRichText::Clicked);
        QTest::mouseClick(&w, Qt::LeftButton, Qt::NoModifier, QPoint(8, PointOf(w, 1).y()));
        QCOMPARE(clicked.count(), 0);
        QTest::mouseClick(&w, Qt::LeftButton, Qt::NoModifier, PointOf(w, 1));
        QCOMPARE(clicked.count(), 1);
    }

    void inLayoutsAndEmpty() {
        lxtest::AssertRecorder rec;
        QWidget host;
        auto* v = new QVBoxLayout(&host);
        auto* w = new CLxRichText(&host);
        v->addWidget(w);
        v->addStretch(1);
        w->SetMaxLine(2);
        w->SetRichTextData({Text(QStringLiteral("long text ").repeated(50))});
        host.resize(300, 400);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QTRY_COMPARE(w->height(), w->heightForWidth(w->width()));
        QCOMPARE(w->GetLineCount(), 2);
        host.resize(600, 400);
        QTRY_COMPARE(w->width(), 600 - v->contentsMargins().left() - v->contentsMargins().right());
        QTRY_COMPARE(w->height(), w->heightForWidth(w->width()));
        w->Clear();
        QCOMPARE(w->text(), QString());
        QCOMPARE(w->textWithEmotionID(), QString());
        QCOMPARE(w->GetFormatHtml(), QString());
        w->SetRichTextData({});
        QCOMPARE(w->GetLineCount(), 1);  // an empty document still has its one empty line
        QCOMPARE(rec.count(), 0);
    }
};

QTEST_MAIN(TestRichText)
#include "tst_RichText.moc"
