// The rich-text document layout: limits, ellipsis, hit testing, inline objects in its lines; and
// the inline object handlers: emoticon pictures, SVG icons, stock and user chips.

#include "RichTextTestUtil.h"

#include <LxStdUI/SvgIconRenderer.h>
#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxStockObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxSvgObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxUserObjectHandler.h>

#include <QPainter>
#include <QTextCursor>
#include <QTextEdit>
#include <QTextImageFormat>

using namespace rt_test;

namespace {

const QChar kSep = QChar::LineSeparator;

// A document on the rich-text layout, margin 0, a fixed font.
struct Doc {
    QTextDocument doc;
    CLxRichTextLayout* pLayout = nullptr;
    explicit Doc(qreal width, const QString& text = QString()) {
        doc.setDocumentMargin(0);
        doc.setDefaultFont(TestFont());
        pLayout = new CLxRichTextLayout(&doc);
        doc.setDocumentLayout(pLayout);
        doc.setTextWidth(width);
        doc.setPlainText(text);
    }
    void Limit(int maxLines, unsigned maxHeight = 0) {
        pLayout->SetMaxLineCount(maxLines);
        pLayout->SetMaxHeight(maxHeight);
        pLayout->Relayout();
    }
    // Block layouts are read after asking the layout for its size: the layout is lazy.
    QTextLayout* Layout(int block) const {
        pLayout->documentSize();
        return doc.findBlockByNumber(block).layout();
    }
    int Lines(int block) const { return Layout(block)->lineCount(); }
    QTextLine Line(int block, int line) const { return Layout(block)->lineAt(line); }
    QImage Render(QAbstractTextDocumentLayout::PaintContext ctx = {}) {
        const QSizeF s = pLayout->documentSize();
        QImage img(qMax(1, qCeil(s.width())), qMax(1, qCeil(s.height())), QImage::Format_ARGB32);
        img.fill(Qt::white);
        QPainter p(&img);
        pLayout->draw(&p, ctx);
        return img;
    }
};

// "line 1" ... "line n" as the lines of one block.
QString Lines(int n) {
    QStringList parts;
    for (int i = 0; i < n; ++i)
        parts << QStringLiteral("line %1").arg(i + 1);
    return parts.join(kSep);
}

qreal EllipsisWidth() { return QFontMetricsF(TestFont()).horizontalAdvance(QStringLiteral("...")); }

QString SvgDataUrl(const char* color) {
    return QStringLiteral("data:image/svg+xml;base64,") + QString::fromLatin1(SvgRect(color).toBase64());
}

}  // namespace

class TestRichTextLayout : public QObject {
    Q_OBJECT
private slots:
    void init() { lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light); }
    void cleanup() { lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light); }

    // Line and height limits, per block: only cut blocks lose lines, narrow their last line for
    // "..." and get an ellipsis; blocks stack, global line numbers count shown lines only, and
    // lifting the limits brings every line back. The height limit keeps the first line whose bottom
    // reaches it and applies only without a line limit.
    void limits_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("maxLines");
        QTest::addColumn<qreal>("maxHeight");   // in line heights
        QTest::addColumn<QList<int>>("lines");  // shown lines per block
        QTest::newRow("lines") << Lines(5) << 2 << 0.0 << QList<int>{2};
        QTest::newRow("lines, exact fit") << Lines(2) << 2 << 0.0 << QList<int>{2};
        QTest::newRow("lines per block") << Lines(4) + "\n" + Lines(1) + "\n" + Lines(3) << 2 << 0.0
                                         << QList<int>{2, 1, 2};
        QTest::newRow("height") << Lines(8) << 0 << 2.4 << QList<int>{3};
        QTest::newRow("height, below one line") << Lines(8) << 0 << 0.6 << QList<int>{1};
        QTest::newRow("height per block") << Lines(4) + "\n" + Lines(2) << 0 << 1.5 << QList<int>{2, 2};
        QTest::newRow("lines win over height") << Lines(8) << 3 << 0.6 << QList<int>{3};
    }
    void limits() {
        QFETCH(QString, text);
        QFETCH(int, maxLines);
        QFETCH(qreal, maxHeight);
        QFETCH(QList<int>, lines);
        Doc d(400, text);
        const int all = d.pLayout->GetLineCount();
        d.Limit(maxLines, unsigned(qRound(maxHeight * d.Line(0, 0).height())));
        int total = 0;
        for (QTextBlock b = d.doc.begin(); b.isValid(); b = b.next()) {
            const int i = b.blockNumber(), n = lines[i];
            const bool cut = n < b.text().count(kSep) + 1;
            QCOMPARE(d.Lines(i), n);
            QCOMPARE(d.pLayout->IsBlockCut(b), cut);
            QCOMPARE(d.pLayout->GetEllipsisRect(b).isValid(), cut);
            for (int k = 0; k < n; ++k)
                QCOMPARE(d.Line(i, k).width(), cut && k == n - 1 ? 400.0 - EllipsisWidth() : 400.0);
            if (i > 0)  // blocks stack without overlapping
                QCOMPARE(d.pLayout->blockBoundingRect(b).top(), d.pLayout->blockBoundingRect(b.previous()).bottom());
            total += n;
        }
        QCOMPARE(d.pLayout->GetLineCount(), total);
        QCOMPARE(d.pLayout->IsAllTextShown(), total == all);  // no cut anywhere
        QTextBlock which;
        QVERIFY(d.pLayout->GetLine(total - 1, &which).isValid() && which.blockNumber() == lines.size() - 1);
        QVERIFY(!d.pLayout->GetLine(total).isValid());
        d.Limit(0);
        QCOMPARE(d.pLayout->GetLineCount(), all);
        QVERIFY(d.pLayout->IsAllTextShown());
    }

    // A block cut to two lines: "..." follows the last shown line in the ellipsis colour, only the
    // shown lines count for the size, hits never reach the hidden text; limits take effect on
    // Relayout(). Selections are drawn half transparent over the text's own colours.
    void cutBlock() {
        Doc d(400);
        QTextCursor c(&d.doc);
        c.insertText(QStringLiteral("plain "));
        QTextCharFormat a;
        a.setAnchor(true);
        a.setAnchorHref(QStringLiteral("7"));
        c.insertText(QStringLiteral("ANCHOR"), a);
        c.insertText(QStringLiteral(" tail") + kSep + QStringLiteral("second line") + kSep + QStringLiteral("hidden"),
                     QTextCharFormat());
        d.pLayout->SetEllipsisTextColor(QStringLiteral("ct_text_red"));
        const qreal fullHeight = d.pLayout->documentSize().height();
        d.pLayout->SetMaxLineCount(2);
        QCOMPARE(d.Lines(0), 3);  // setters alone do not relayout
        QSignalSpy sizeSpy(d.pLayout, &QAbstractTextDocumentLayout::documentSizeChanged);
        d.pLayout->Relayout();
        const QTextLine l0 = d.Line(0, 0), l1 = d.Line(0, 1);
        QCOMPARE(d.pLayout->documentSize().height(), l1.y() + l1.height());
        QVERIFY(l1.y() + l1.height() < fullHeight);
        QCOMPARE(sizeSpy.count(), 1);
        const QRectF er = d.pLayout->GetEllipsisRect(d.doc.begin());
        QCOMPARE(er.left(), l1.x() + l1.naturalTextWidth());
        QVERIFY(er.top() >= l1.y() - 1);
        QAbstractTextDocumentLayout::PaintContext ctx;
        ctx.selections << QAbstractTextDocumentLayout::Selection{QTextCursor(&d.doc), QTextCharFormat()};
        ctx.selections[0].cursor.setPosition(5, QTextCursor::KeepAnchor);  // "plain"
        ctx.selections[0].format.setBackground(QColor(0, 0, 255));
        const QImage img = d.Render(ctx);
        QVERIFY(RedPixels(img, er.toAlignedRect()) > 3);
        QCOMPARE(RedPixels(img, QRect(0, 0, qFloor(er.left()), img.height())), 0);
        const QColor selected = img.pixelColor(1, qRound(l0.y() + 1));
        QVERIFY2(selected.blue() == 255 && selected.red() > 100 && selected.red() < 140, qPrintable(selected.name()));
        QCOMPARE(img.pixelColor(qRound(l0.cursorToX(6)), qRound(l0.y() + 1)), QColor(Qt::white));

        const QPointF onAnchor((l0.cursorToX(6) + l0.cursorToX(12)) / 2, l0.y() + l0.height() / 2);
        QCOMPARE(d.pLayout->anchorAt(onAnchor), QStringLiteral("7"));
        QCOMPARE(d.pLayout->anchorAt(QPointF(l0.cursorToX(2), onAnchor.y())), QString());
        QCOMPARE(d.pLayout->hitTest(QPointF(390, onAnchor.y()), Qt::ExactHit), -1);  // right of the text
        QCOMPARE(d.pLayout->hitTest(QPointF(10, 500), Qt::FuzzyHit), l1.textStart() + l1.textLength());
        QCOMPARE(d.pLayout->hitTest(QPointF(10, 500), Qt::ExactHit), -1);
        // Without the ellipsis the cut and the narrower line stay; nothing is drawn.
        d.pLayout->SetShowEllipsis(false);
        d.pLayout->Relayout();
        QCOMPARE(d.Line(0, 1).width(), 400.0 - EllipsisWidth());
        QVERIFY(d.pLayout->GetEllipsisRect(d.doc.begin()).isNull());
        QCOMPARE(RedPixels(d.Render(), QRect(0, 0, 400, 100)), 0);
    }

    // Wrapped text cut at three lines, Latin or mixed CJK, left or right aligned: the last line
    // gives room to "..." and loses the words that no longer fit; "..." follows its text inside
    // the width. Without a text width nothing wraps.
    void wrappedTextCut() {
        Doc d(200);
        d.Limit(3);
        for (Qt::Alignment align : {Qt::AlignLeft, Qt::AlignRight})
            for (const QString& text :
                 {QStringLiteral("alpha beta gamma delta epsilon zeta eta theta iota kappa lambda mu nu xi "
                                 "omicron pi rho sigma tau upsilon phi chi psi omega"),
                  QStringLiteral("今天的行情非常好，市场情绪高涨。Markets rallied on strong earnings，"
                                 "投资者继续买入科技股，成交量放大。") +
                      QStringLiteral("这是第二句话，用来确认截断。").repeated(4)}) {
                QTextOption opt = d.doc.defaultTextOption();
                opt.setAlignment(align);
                d.doc.setDefaultTextOption(opt);
                d.doc.setPlainText(text);
                QCOMPARE(d.Lines(0), 3);
                const QTextLine last = d.Line(0, 2);
                QCOMPARE(last.width(), 200.0 - EllipsisWidth());
                QVERIFY(last.naturalTextWidth() <= last.width() + 0.01);
                QVERIFY(d.pLayout->IsBlockCut(d.doc.begin()));
                const QRectF er = d.pLayout->GetEllipsisRect(d.doc.begin());
                QVERIFY(er.right() <= 200.5 && (align == Qt::AlignLeft || er.right() > 199));
                QVERIFY(d.pLayout->hitTest(QPointF(er.left() - 2, last.y() + last.height() / 2), Qt::ExactHit) >= 0);
            }

        Doc n(-1, QStringLiteral("one rather long line that would wrap at a small width"));
        QCOMPARE(n.Lines(0), 1);
        QCOMPARE(n.pLayout->documentSize().width(), n.Line(0, 0).naturalTextWidth());
        QCOMPARE(n.pLayout->GetIdealWidth(), n.Line(0, 0).naturalTextWidth());
    }

    // Our svg and emoticon handlers and Qt's own image handler, side by side in one line. The
    // emoticon handler sizes from the picture's shape and draws the @2x file on high-density targets.
    void inlineObjectsAndImages() {
        QTemporaryDir dir;
        Doc d(400);
        auto* emoticons = CreateLxEmotionObjectHandler(&d.doc);
        d.pLayout->registerHandler(QTextFormat::UserObject + 1, new CLxSvgObjectHandler(&d.doc));
        d.pLayout->registerHandler(QTextFormat::UserObject + 4, emoticons);
        const QString pic = MakeImage(dir, QStringLiteral("p.png"), QSize(60, 30), Qt::blue);
        MakeImage(dir, QStringLiteral("p@2x.png"), QSize(120, 60), Qt::green);
        QTextCursor c(&d.doc);
        c.insertText(QStringLiteral("x"));
        auto insert = [&](int type, const QString& name, qreal w, qreal h) {
            QTextImageFormat f;
            f.setObjectType(type);
            f.setName(name);
            if (w > 0)  // else from the picture
                f.setWidth(w);
            f.setHeight(h);
            c.insertText(QString(QChar::ObjectReplacementCharacter), f);
            return f;
        };
        insert(QTextFormat::UserObject + 1, SvgDataUrl("#00ff00"), 30, 24);
        QTextImageFormat f = insert(QTextFormat::UserObject + 4, pic, 0, 20);  // 40 wide
        insert(QTextFormat::ImageObject, pic, 12, 12);
        const QTextLine line = d.Line(0, 0);
        QVERIFY(line.height() >= 24);
        const QImage img = d.Render();
        const int y = qRound(line.y() + line.ascent()) - 3;
        const std::pair<qreal, QColor> objects[] = {{30, QColor(0, 255, 0)}, {40, Qt::blue}, {12, Qt::blue}};
        for (int i = 0; i < 3; ++i) {
            const qreal x = line.cursorToX(i + 1);
            QCOMPARE(line.cursorToX(i + 2) - x, objects[i].first);
            QCOMPARE(img.pixelColor(qRound(x + objects[i].first / 2), y), objects[i].second);
        }

        auto* h = qobject_cast<QTextObjectInterface*>(emoticons);
        f.clearProperty(QTextFormat::ImageHeight);
        QCOMPARE(h->intrinsicSize(nullptr, 0, f), QSizeF(60, 30));
        f.setWidth(20);
        QCOMPARE(h->intrinsicSize(nullptr, 0, f), QSizeF(20, 10));
        QImage hiDpi(QSize(40, 20), QImage::Format_ARGB32);
        hiDpi.setDevicePixelRatio(2);
        hiDpi.fill(Qt::white);
        QPainter p(&hiDpi);
        h->drawObject(&p, QRectF(0, 0, 20, 10), nullptr, 0, f);
        p.end();
        QCOMPARE(hiDpi.pixelColor(20, 10), QColor(Qt::green));
    }

    // As Qt's own image handler: a document resource wins over a file of the same name, and a
    // picture loaded from a file is kept in the document (not in a process-wide cache that would
    // outlive the file or serve another document's picture).
    void emoticonLookupOrder() {
        QTemporaryDir dir;
        const QString pic = MakeImage(dir, QStringLiteral("e.png"), QSize(60, 30), Qt::blue);
        auto sizeIn = [&](QTextDocument* doc) {
            QObject owner;
            auto* h = qobject_cast<QTextObjectInterface*>(CreateLxEmotionObjectHandler(&owner));
            QTextImageFormat f;
            f.setName(pic);
            return h->intrinsicSize(doc, 0, f);
        };
        QTextDocument withResource;
        QPixmap small(10, 8);
        small.fill(Qt::red);
        withResource.addResource(QTextDocument::ImageResource, QUrl(pic), small);
        QCOMPARE(sizeIn(&withResource), QSizeF(10, 8));

        QTextDocument plain;
        QCOMPARE(sizeIn(&plain), QSizeF(60, 30));
        QCOMPARE(plain.resource(QTextDocument::ImageResource, QUrl(pic)).userType(), int(QMetaType::QPixmap));
        QVERIFY(QFile::remove(pic));
        MakeImage(dir, QStringLiteral("e.png"), QSize(20, 20), Qt::green);
        QCOMPARE(sizeIn(&plain), QSizeF(60, 30));  // the document's copy
        QTextDocument fresh;
        QCOMPARE(sizeIn(&fresh), QSizeF(20, 20));  // the file as it is now
        QCOMPARE(sizeIn(&withResource), QSizeF(10, 8));
    }

    void svgHandler() {
        lxtest::AssertRecorder rec;
        const QString file = QStringLiteral("LxSvgObjectHandler");
        CLxSvgObjectHandler h;
        QTextImageFormat f;
        f.setWidth(0);
        f.setHeight(10);
        QCOMPARE(h.intrinsicSize(nullptr, 0, f), QSizeF());
        QVERIFY(rec.has(file, QStringLiteral("imageFormat.width() > 0 && imageFormat.height() > 0")));
        f.setWidth(16);
        QCOMPARE(h.intrinsicSize(nullptr, 0, f), QSizeF(16, 10));
        QImage img(10, 10, QImage::Format_ARGB32);
        QPainter p(&img);
        auto drawn = [&](const QString& name) {
            f.setName(name);
            img.fill(Qt::white);
            h.drawObject(&p, QRectF(0, 0, 10, 10), nullptr, 0, f);
            return img.pixelColor(5, 5);
        };
        drawn(QString());
        QVERIFY(rec.has(file, QStringLiteral("!imageUrl.isEmpty()")));
        // A relative path names an icon of the widget library, drawn for the current theme; a
        // plain file path is drawn as it is.
        QTemporaryDir dir;
        for (auto icon : {std::make_pair("chip", "#0000ff"), std::make_pair("chip_dark", "#ffff00"),
                          std::make_pair("chip_hover", "#00ff00")})
            lxtest::WriteFile(dir.filePath(QStringLiteral("icons/%1.svg").arg(icon.first)), SvgRect(icon.second));
        lx_ui_res::SvgIconRenderer::addSearchRoot(dir.path());
        QCOMPARE(drawn(QStringLiteral("icons/chip.svg")), QColor(Qt::blue));
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QCOMPARE(drawn(QStringLiteral("icons/chip.svg")), QColor(Qt::yellow));
        QCOMPARE(drawn(dir.filePath(QStringLiteral("icons/chip.svg"))), QColor(Qt::blue));
        p.end();
        QCOMPARE(rec.count(), 2);
        // States: a variant file when there is one; a disabled icon without one is faded.
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
        auto icon = lx_ui_res::SvgIconRenderer::get(QStringLiteral("icons/chip.svg"));
        QVERIFY(icon);
        QCOMPARE(icon->defaultSize(), QSizeF(10, 10));
        auto pixel = [&](lx_ui_res::SvgIconRenderer::State state) {
            return icon->pixmap(QSize(8, 8), 2.0, state).toImage().pixelColor(8, 8);
        };
        QCOMPARE(pixel(lx_ui_res::SvgIconRenderer::Normal), QColor(Qt::blue));
        QCOMPARE(pixel(lx_ui_res::SvgIconRenderer::Hover), QColor(Qt::green));
        QCOMPARE(pixel(lx_ui_res::SvgIconRenderer::Pressed), QColor(Qt::blue));
        QCOMPARE(pixel(lx_ui_res::SvgIconRenderer::Disabled).alpha(), qRound(255 * 0.4));
        QVERIFY(!lx_ui_res::SvgIconRenderer::get(QStringLiteral("icons/none.svg")));
    }

    // Stock and user chips: sized by their text in the document font, drawn in the colour key's
    // current colour; formats without the text take no room and assert. Handlers learn whether
    // their position is selected from the QTextEdit that shows the document.
    void textBlockHandlers() {
        lxtest::AssertRecorder rec;
        struct Stock : CLxStockObjectHandler {
            using CLxStockObjectHandler::CLxStockObjectHandler;
            using CLxTextObjectHandlerBase::IsSelected;
        };
        QTextEdit edit;
        QTextDocument* doc = edit.document();
        doc->setDefaultFont(TestFont());
        auto* stock = new Stock(&edit);
        doc->documentLayout()->registerHandler(QTextFormat::UserObject + 10, stock);
        QTextCursor c(doc);
        c.insertText(QStringLiteral("buy "));
        CLxTextBlockObjectHandlerBase::InsertTextBlock(c, QTextFormat::UserObject + 10, QStringLiteral("$HRBR$"),
                                                       QStringLiteral("ct_text_red"));
        c.setPosition(5);
        const QTextCharFormat fmt = c.charFormat();
        QCOMPARE(fmt.objectType(), int(QTextFormat::UserObject + 10));
        const QFontMetricsF fm(TestFont());
        QCOMPARE(stock->intrinsicSize(doc, 4, fmt), QSizeF(fm.horizontalAdvance(QStringLiteral("$HRBR$")),
                                                           fm.boundingRect(QStringLiteral("$HRBR$")).height()));
        QImage img(80, 30, QImage::Format_ARGB32);
        img.fill(Qt::white);
        QPainter p(&img);
        stock->drawObject(&p, QRectF(0, 0, 80, 30), doc, 4, fmt);
        p.end();
        QVERIFY(RedPixels(img, img.rect()) > 10);

        c.setPosition(2);
        c.setPosition(5, QTextCursor::KeepAnchor);
        edit.setTextCursor(c);
        for (int pos : {1, 2, 4, 5})  // the end is outside
            QCOMPARE(stock->IsSelected(doc, pos), pos >= 2 && pos < 5);
        QCOMPARE(rec.count(), 0);
        QTextDocument loose;
        QVERIFY(!stock->IsSelected(&loose, 0));
        QVERIFY(rec.has(QStringLiteral("LxTextObjectHandlerBase"), QStringLiteral("pTextEdit != nullptr")));
        QVERIFY(!stock->IsSelected(nullptr, 0));
        QVERIFY(rec.has(QStringLiteral("LxTextObjectHandlerBase"), QStringLiteral("doc != nullptr")));

        CLxUserObjectHandler user;
        QTextCharFormat bare;
        bare.setObjectType(QTextFormat::UserObject + 10);
        QCOMPARE(user.intrinsicSize(doc, 0, bare), QSizeF(-1, -1));
        QVERIFY(rec.has(QStringLiteral("LxTextBlockObjectHandlerBase"),
                        QStringLiteral("charFormat.hasProperty(static_cast<int>(TextFormatProperty::DisplayText))")));
        QCOMPARE(user.intrinsicSize(doc, 0, QTextBlockFormat()), QSizeF(-1, -1));
        QVERIFY(rec.has(QStringLiteral("LxTextBlockObjectHandlerBase"), QStringLiteral("charFormat.isValid()")));
    }
};

QTEST_MAIN(TestRichTextLayout)
#include "tst_RichTextLayout.moc"
