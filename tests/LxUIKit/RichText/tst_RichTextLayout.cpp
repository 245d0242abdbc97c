// The rich-text document layout (limits, ellipsis, hit testing) and the inline object handlers.

#include "LxTestSupport.h"

#include <LxStdUI/ResProvider.h>
#include <LxStdUI/SvgIconRenderer.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxStockObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxSvgObjectHandler.h>
#include <LxUIKit/LxTextObjectHandler/LxUserObjectHandler.h>
#include <LxUIKit/RichText/LxRichTextLayout.h>

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <QTextImageFormat>
#include <QtTest>

namespace {

const QChar kSep = QChar::LineSeparator;

QFont TestFont() {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(14);
    return f;
}

// A document on the rich-text layout, margin 0, a fixed font.
struct Doc {
    QTextDocument doc;
    CLxRichTextLayout* pLayout = nullptr;
    explicit Doc(qreal width) {
        doc.setDocumentMargin(0);
        doc.setDefaultFont(TestFont());
        pLayout = new CLxRichTextLayout(&doc);
        doc.setDocumentLayout(pLayout);
        doc.setTextWidth(width);
    }
    // Block layouts are read after asking the layout for its size: the layout is lazy.
    int Lines(int block) const {
        pLayout->documentSize();
        return doc.findBlockByNumber(block).layout()->lineCount();
    }
    QTextLine Line(int block, int line) const {
        pLayout->documentSize();
        return doc.findBlockByNumber(block).layout()->lineAt(line);
    }
    QImage Render() {
        const QSizeF s = pLayout->documentSize();
        QImage img(qMax(1, qCeil(s.width())), qMax(1, qCeil(s.height())), QImage::Format_ARGB32);
        img.fill(Qt::white);
        QPainter p(&img);
        QAbstractTextDocumentLayout::PaintContext ctx;
        ctx.palette.setColor(QPalette::Text, Qt::black);
        pLayout->draw(&p, ctx);
        return img;
    }
};

QString Lines(int n) {
    QStringList parts;
    for (int i = 0; i < n; ++i)
        parts << QStringLiteral("line %1").arg(i + 1);
    return parts.join(kSep);
}

qreal EllipsisWidth() { return QFontMetricsF(TestFont()).horizontalAdvance(QStringLiteral("...")); }

bool IsReddish(QRgb c) { return qRed(c) > 150 && qGreen(c) < 140 && qBlue(c) < 140; }

int CountPixels(const QImage& img, const QRect& area, const std::function<bool(QRgb)>& pred) {
    int n = 0;
    const QRect r = area.intersected(img.rect());
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            n += pred(img.pixel(x, y)) ? 1 : 0;
    return n;
}

QString SvgRect(const QString& color) {
    return QStringLiteral(
               "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'>"
               "<rect width='10' height='10' fill='%1'/></svg>")
        .arg(color);
}

void InsertObject(QTextCursor& c, int type, const QString& name, qreal w, qreal h) {
    QTextImageFormat f;
    f.setObjectType(type);
    f.setName(name);
    if (w >= 0)
        f.setWidth(w);
    if (h >= 0)
        f.setHeight(h);
    c.insertText(QString(QChar::ObjectReplacementCharacter), f);
}

}  // namespace

class TestRichTextLayout : public QObject {
    Q_OBJECT
private slots:
    void init() { lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light); }

    void lineLimitAndEllipsis() {
        Doc d(400);
        d.doc.setPlainText(Lines(5));
        d.pLayout->SetEllipsisTextColor(QStringLiteral("ct_text_red"));
        const qreal fullHeight = d.pLayout->documentSize().height();
        QCOMPARE(d.Lines(0), 5);
        QVERIFY(d.pLayout->IsAllTextShown());
        QCOMPARE(d.Line(0, 4).width(), 400.0);

        d.pLayout->SetMaxLineCount(2);
        QCOMPARE(d.Lines(0), 5);  // setters alone do not relayout
        QSignalSpy sizeSpy(d.pLayout, &QAbstractTextDocumentLayout::documentSizeChanged);
        d.pLayout->Relayout();
        QCOMPARE(d.Lines(0), 2);
        QCOMPARE(d.pLayout->GetLineCount(), 2);
        QVERIFY(!d.pLayout->IsAllTextShown());
        QVERIFY(d.pLayout->IsBlockCut(d.doc.begin()));
        QCOMPARE(d.Line(0, 0).width(), 400.0);
        QCOMPARE(d.Line(0, 1).width(), 400.0 - EllipsisWidth());
        // Only the visible lines count for the size.
        const qreal twoLines = d.Line(0, 1).y() + d.Line(0, 1).height();
        QCOMPARE(d.pLayout->documentSize().height(), twoLines);
        QVERIFY(twoLines < fullHeight);
        QCOMPARE(sizeSpy.count(), 1);

        // "..." follows the last line, in the ellipsis colour; nothing else is red.
        const QRectF er = d.pLayout->GetEllipsisRect(d.doc.begin());
        QVERIFY(er.isValid());
        QCOMPARE(er.left(), d.Line(0, 1).x() + d.Line(0, 1).naturalTextWidth());
        QVERIFY(er.top() >= d.Line(0, 1).y() - 1);
        const QImage img = d.Render();
        QVERIFY(CountPixels(img, er.toAlignedRect(), IsReddish) > 3);
        QCOMPARE(CountPixels(img, QRect(0, 0, qFloor(er.left()), img.height()), IsReddish), 0);

        // Without the ellipsis the cut and the narrower line stay; nothing is drawn.
        d.pLayout->SetShowEllipsis(false);
        d.pLayout->Relayout();
        QCOMPARE(d.Lines(0), 2);
        QCOMPARE(d.Line(0, 1).width(), 400.0 - EllipsisWidth());
        QVERIFY(d.pLayout->GetEllipsisRect(d.doc.begin()).isNull());
        QCOMPARE(CountPixels(d.Render(), QRect(0, 0, 400, 100), IsReddish), 0);
    }

    void exactFitShowsNoEllipsis() {
        Doc d(400);
        d.doc.setPlainText(Lines(2));
        d.pLayout->SetMaxLineCount(2);
        d.pLayout->Relayout();
        QCOMPARE(d.Lines(0), 2);
        QVERIFY(d.pLayout->IsAllTextShown());
        QCOMPARE(d.Line(0, 1).width(), 400.0);
        QVERIFY(d.pLayout->GetEllipsisRect(d.doc.begin()).isNull());
    }

    // A cut inside wrapped text: the last line gives room to "..." and loses the words that no
    // longer fit; they are not shown anywhere.
    void wrappedTextCut() {
        Doc d(200);
        d.doc.setPlainText(
            QStringLiteral("alpha beta gamma delta epsilon zeta eta theta iota kappa lambda mu nu xi "
                           "omicron pi rho sigma tau upsilon phi chi psi omega"));
        d.pLayout->SetMaxLineCount(3);
        d.pLayout->Relayout();
        QCOMPARE(d.Lines(0), 3);
        const QTextLine last = d.Line(0, 2);
        QCOMPARE(last.width(), 200.0 - EllipsisWidth());
        QVERIFY(last.naturalTextWidth() <= last.width() + 0.01);
        const QRectF er = d.pLayout->GetEllipsisRect(d.doc.begin());
        QVERIFY(er.right() <= 200.5);
        // Mixed CJK and Latin breaks as well.
        d.doc.setPlainText(QStringLiteral("今天的行情非常好，市场情绪高涨。Markets rallied on strong earnings，"
                                          "投资者继续买入科技股，成交量放大。") +
                           QStringLiteral("这是第二句话，用来确认截断。").repeated(4));
        QCOMPARE(d.Lines(0), 3);
        QVERIFY(d.pLayout->IsBlockCut(d.doc.begin()));
        QVERIFY(d.pLayout->GetEllipsisRect(d.doc.begin()).right() <= 200.5);
    }

    void heightLimit() {
        Doc d(400);
        d.doc.setPlainText(Lines(8));
        const qreal lineHeight = d.Line(0, 0).height();
        QVERIFY(lineHeight > 5);
        d.pLayout->SetMaxHeight(40);
        d.pLayout->Relayout();
        const int n = d.Lines(0);
        // Stops at the first line whose bottom reaches 40; that line is still there.
        QVERIFY(d.Line(0, n - 1).y() + d.Line(0, n - 1).height() >= 40);
        QVERIFY(n == 1 || d.Line(0, n - 2).y() + d.Line(0, n - 2).height() < 40);
        QCOMPARE(n, qCeil(40 / lineHeight));
        QVERIFY(d.pLayout->IsBlockCut(d.doc.begin()));

        // With a line limit, the height limit is ignored altogether.
        d.pLayout->SetMaxLineCount(3);
        d.pLayout->SetMaxHeight(10);
        d.pLayout->Relayout();
        QCOMPARE(d.Lines(0), 3);
        d.pLayout->SetMaxLineCount(0);
        d.pLayout->Relayout();
        QCOMPARE(d.Lines(0), 1);
        d.pLayout->SetMaxHeight(0);
        d.pLayout->Relayout();
        QCOMPARE(d.Lines(0), 8);
    }

    void limitsApplyPerBlock() {
        Doc d(400);
        d.doc.setPlainText(Lines(4) + QLatin1Char('\n') + Lines(1) + QLatin1Char('\n') + Lines(3));
        d.pLayout->SetMaxLineCount(2);
        d.pLayout->Relayout();
        QCOMPARE(d.doc.blockCount(), 3);
        QCOMPARE(d.Lines(0), 2);
        QCOMPARE(d.Lines(1), 1);
        QCOMPARE(d.Lines(2), 2);
        QVERIFY(d.pLayout->IsBlockCut(d.doc.findBlockByNumber(0)));
        QVERIFY(!d.pLayout->IsBlockCut(d.doc.findBlockByNumber(1)));
        QVERIFY(d.pLayout->IsBlockCut(d.doc.findBlockByNumber(2)));
        QCOMPARE(d.pLayout->GetLineCount(), 5);
        // Blocks stack without overlapping.
        const QRectF b0 = d.pLayout->blockBoundingRect(d.doc.findBlockByNumber(0));
        const QRectF b1 = d.pLayout->blockBoundingRect(d.doc.findBlockByNumber(1));
        QCOMPARE(b1.top(), b0.bottom());
        QTextBlock which;
        const QTextLine line3 = d.pLayout->GetLine(3, &which);
        QVERIFY(line3.isValid());
        QCOMPARE(which.blockNumber(), 2);
        QVERIFY(!d.pLayout->GetLine(5).isValid());
    }

    void hitTesting() {
        Doc d(400);
        QTextCursor c(&d.doc);
        c.insertText(QStringLiteral("plain "));
        QTextCharFormat a;
        a.setAnchor(true);
        a.setAnchorHref(QStringLiteral("7"));
        c.insertText(QStringLiteral("ANCHOR"), a);
        c.insertText(QStringLiteral(" tail") + kSep + QStringLiteral("second line") + kSep + QStringLiteral("hidden"),
                     QTextCharFormat());
        d.pLayout->SetMaxLineCount(2);
        d.pLayout->Relayout();
        const QTextLine l0 = d.Line(0, 0);
        const qreal midY = l0.y() + l0.height() / 2;
        const qreal anchorX = (l0.cursorToX(6) + l0.cursorToX(12)) / 2;
        QCOMPARE(d.pLayout->anchorAt(QPointF(anchorX, midY)), QStringLiteral("7"));
        QCOMPARE(d.pLayout->anchorAt(QPointF(l0.cursorToX(2), midY)), QString());
        const int pos = d.pLayout->hitTest(QPointF(anchorX, midY), Qt::ExactHit);
        QVERIFY(pos >= 6 && pos < 12);
        // Right of the text: no exact hit, a fuzzy one at the line's end.
        QCOMPARE(d.pLayout->hitTest(QPointF(390, midY), Qt::ExactHit), -1);
        QCOMPARE(d.pLayout->anchorAt(QPointF(390, midY)), QString());
        // Below the last visible line: the end of the shown text, never the hidden part.
        const QTextLine l1 = d.Line(0, 1);
        const int end = l1.textStart() + l1.textLength();
        QCOMPARE(d.pLayout->hitTest(QPointF(10, 500), Qt::FuzzyHit), end);
        QCOMPARE(d.pLayout->hitTest(QPointF(10, 500), Qt::ExactHit), -1);
        QVERIFY(d.pLayout->hitTest(QPointF(5, l1.y() + 2), Qt::FuzzyHit) >= l1.textStart());
    }

    void alignmentAndNoWrap() {
        Doc d(300);
        QTextOption opt = d.doc.defaultTextOption();
        opt.setAlignment(Qt::AlignRight);
        d.doc.setDefaultTextOption(opt);
        d.doc.setPlainText(Lines(4));
        d.pLayout->SetMaxLineCount(2);
        d.pLayout->Relayout();
        const QRectF er = d.pLayout->GetEllipsisRect(d.doc.begin());
        QVERIFY(er.isValid());
        QVERIFY(qAbs(er.right() - 300) < 1.0);
        const QTextLine l1 = d.Line(0, 1);
        QVERIFY(d.pLayout->hitTest(QPointF(er.left() - 2, l1.y() + l1.height() / 2), Qt::ExactHit) >= 0);

        // No text width: as wide as the content, nothing wraps.
        Doc n(-1);
        n.doc.setPlainText(QStringLiteral("one rather long line that would wrap at a small width"));
        QCOMPARE(n.Lines(0), 1);
        const qreal natural = n.Line(0, 0).naturalTextWidth();
        QCOMPARE(n.pLayout->documentSize().width(), natural);
        QCOMPARE(n.pLayout->GetIdealWidth(), natural);
    }

    void inlineObjectsAndImages() {
        QTemporaryDir dir;
        Doc d(400);
        auto* svg = new CLxSvgObjectHandler(&d.doc);
        d.pLayout->registerHandler(QTextFormat::UserObject + 1, svg);
        d.pLayout->registerHandler(QTextFormat::UserObject + 4, CreateLxEmotionObjectHandler(&d.doc));
        QImage pic(60, 30, QImage::Format_ARGB32);
        pic.fill(Qt::blue);
        const QString picPath = dir.filePath(QStringLiteral("p.png"));
        QVERIFY(pic.save(picPath));

        QTextCursor c(&d.doc);
        c.insertText(QStringLiteral("x"));
        const QString dataUrl = QStringLiteral("data:image/svg+xml;base64,") +
                                QString::fromLatin1(SvgRect(QStringLiteral("#00ff00")).toUtf8().toBase64());
        InsertObject(c, QTextFormat::UserObject + 1, dataUrl, 30, 24);
        InsertObject(c, QTextFormat::UserObject + 4, picPath, -1, 20);  // width from the picture: 40
        InsertObject(c, QTextFormat::ImageObject, picPath, 12, 12);     // Qt's own image handler
        const QTextLine line = d.Line(0, 0);
        QVERIFY(line.height() >= 24);
        const qreal x1 = line.cursorToX(1), x2 = line.cursorToX(2), x3 = line.cursorToX(3), x4 = line.cursorToX(4);
        QCOMPARE(x2 - x1, 30.0);
        QCOMPARE(x3 - x2, 40.0);
        QCOMPARE(x4 - x3, 12.0);
        const QImage img = d.Render();
        const int baseY = qRound(line.y() + line.ascent()) - 3;
        QCOMPARE(img.pixelColor(qRound(x1 + 15), baseY), QColor(0, 255, 0));
        QCOMPARE(img.pixelColor(qRound(x2 + 20), baseY), QColor(Qt::blue));
        QCOMPARE(img.pixelColor(qRound(x3 + 6), baseY), QColor(Qt::blue));
    }

    void emoticonHighResolution() {
        QTemporaryDir dir;
        QImage low(40, 40, QImage::Format_ARGB32), high(80, 80, QImage::Format_ARGB32);
        low.fill(Qt::red);
        high.fill(Qt::green);
        QVERIFY(low.save(dir.filePath(QStringLiteral("e.png"))));
        QVERIFY(high.save(dir.filePath(QStringLiteral("e@2x.png"))));
        QObject owner;
        auto* h = qobject_cast<QTextObjectInterface*>(CreateLxEmotionObjectHandler(&owner));
        QVERIFY(h);
        QTextImageFormat f;
        f.setName(dir.filePath(QStringLiteral("e.png")));
        QCOMPARE(h->intrinsicSize(nullptr, 0, f), QSizeF(40, 40));
        f.setWidth(20);
        QCOMPARE(h->intrinsicSize(nullptr, 0, f), QSizeF(20, 20));
        for (qreal dpr : {1.0, 2.0}) {
            QImage target(QSize(20, 20) * dpr, QImage::Format_ARGB32);
            target.setDevicePixelRatio(dpr);
            target.fill(Qt::white);
            QPainter p(&target);
            h->drawObject(&p, QRectF(0, 0, 20, 20), nullptr, 0, f);
            p.end();
            QCOMPARE(target.pixelColor(target.width() / 2, target.height() / 2),
                     dpr > 1 ? QColor(Qt::green) : QColor(Qt::red));
        }
    }

    void svgHandler() {
        lxtest::AssertRecorder rec;
        CLxSvgObjectHandler h;
        QTextImageFormat f;
        f.setWidth(0);
        f.setHeight(10);
        QCOMPARE(h.intrinsicSize(nullptr, 0, f), QSizeF());
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LxTextObjectHandler/LxSvgObjectHandler"),
                        QStringLiteral("imageFormat.width() > 0 && imageFormat.height() > 0")));
        f.setWidth(16);
        QCOMPARE(h.intrinsicSize(nullptr, 0, f), QSizeF(16, 10));
        QImage img(10, 10, QImage::Format_ARGB32);
        QPainter p(&img);
        h.drawObject(&p, QRectF(0, 0, 10, 10), nullptr, 0, f);
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LxTextObjectHandler/LxSvgObjectHandler"),
                        QStringLiteral("!imageUrl.isEmpty()")));

        // A relative path names an icon of the widget library, drawn for the current theme; a
        // plain file path is drawn as it is.
        QTemporaryDir dir;
        lxtest::WriteFile(dir.filePath(QStringLiteral("icons/chip.svg")), SvgRect(QStringLiteral("#0000ff")).toUtf8());
        lxtest::WriteFile(dir.filePath(QStringLiteral("icons/chip_dark.svg")),
                          SvgRect(QStringLiteral("#ffff00")).toUtf8());
        lx_ui_res::SvgIconRenderer::addSearchRoot(dir.path());
        f.setName(QStringLiteral("icons/chip.svg"));
        auto drawn = [&](const QTextImageFormat& fmt) {
            img.fill(Qt::white);
            h.drawObject(&p, QRectF(0, 0, 10, 10), nullptr, 0, fmt);
            return img.pixelColor(5, 5);
        };
        QCOMPARE(drawn(f), QColor(Qt::blue));
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Dark);
        QCOMPARE(drawn(f), QColor(Qt::yellow));
        f.setName(dir.filePath(QStringLiteral("icons/chip.svg")));
        QCOMPARE(drawn(f), QColor(Qt::blue));
        f.setName(QStringLiteral("data:image/svg+xml;base64,") +
                  QString::fromLatin1(SvgRect(QStringLiteral("#ff0000")).toUtf8().toBase64()));
        QCOMPARE(drawn(f), QColor(Qt::red));
        p.end();
        QCOMPARE(rec.count(), 2);

        // States: a variant file when there is one; a disabled icon without one is faded.
        lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light);
        lxtest::WriteFile(dir.filePath(QStringLiteral("icons/chip_hover.svg")),
                          SvgRect(QStringLiteral("#00ff00")).toUtf8());
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

    void textBlockHandlers() {
        lxtest::AssertRecorder rec;
        QTextEdit edit;
        edit.document()->setDefaultFont(TestFont());
        auto* stock = new CLxStockObjectHandler(&edit);
        auto* user = new CLxUserObjectHandler(&edit);
        edit.document()->documentLayout()->registerHandler(QTextFormat::UserObject + 10, stock);
        edit.document()->documentLayout()->registerHandler(QTextFormat::UserObject + 11, user);
        QTextCursor c(edit.document());
        c.insertText(QStringLiteral("buy "));
        CLxTextBlockObjectHandlerBase::InsertTextBlock(c, QTextFormat::UserObject + 10, QStringLiteral("$AAPL$"),
                                                       QStringLiteral("ct_text_red"));
        c.insertText(QStringLiteral(" says "));
        CLxTextBlockObjectHandlerBase::InsertTextBlock(c, QTextFormat::UserObject + 11, QStringLiteral("@ann"),
                                                       QStringLiteral("ct_text_link"));
        QTextCursor at(edit.document());
        at.setPosition(5);
        const QTextCharFormat fmt = at.charFormat();
        QCOMPARE(fmt.objectType(), int(QTextFormat::UserObject + 10));
        const QSizeF size = stock->intrinsicSize(edit.document(), 4, fmt);
        QCOMPARE(size.width(), QFontMetricsF(TestFont()).horizontalAdvance(QStringLiteral("$AAPL$")));
        QCOMPARE(size.height(), QFontMetricsF(TestFont()).boundingRect(QStringLiteral("$AAPL$")).height());

        // Drawn in the key's colour for the current theme.
        QImage img(80, 30, QImage::Format_ARGB32);
        img.fill(Qt::white);
        QPainter p(&img);
        stock->drawObject(&p, QRectF(0, 0, 80, 30), edit.document(), 4, fmt);
        p.end();
        QVERIFY(CountPixels(img, img.rect(), IsReddish) > 10);

        // A format without the text takes no room.
        QTextCharFormat bare;
        bare.setObjectType(QTextFormat::UserObject + 10);
        QCOMPARE(user->intrinsicSize(edit.document(), 0, bare), QSizeF(-1, -1));
        QVERIFY(rec.has(QStringLiteral("LxPlatform/LxUIKit/LxTextObjectHandler/LxTextBlockObjectHandlerBase"),
                        QStringLiteral("charFormat.hasProperty(static_cast<int>(TextFormatProperty::DisplayText))")));
        QCOMPARE(user->intrinsicSize(edit.document(), 0, QTextBlockFormat()), QSizeF(-1, -1));
        QVERIFY(rec.has(QStringLiteral("LxTextBlockObjectHandlerBase"), QStringLiteral("charFormat.isValid()")));
    }

    void selectionInTextEdit() {
        lxtest::AssertRecorder rec;
        struct Probe : CLxTextObjectHandlerBase {
            using CLxTextObjectHandlerBase::GetTextEdit;
            using CLxTextObjectHandlerBase::IsSelected;
        } probe;
        QTextEdit edit;
        edit.setPlainText(QStringLiteral("0123456789"));
        QTextCursor c = edit.textCursor();
        c.setPosition(2);
        c.setPosition(5, QTextCursor::KeepAnchor);
        edit.setTextCursor(c);
        QCOMPARE(probe.GetTextEdit(edit.document()), &edit);
        QVERIFY(!probe.IsSelected(edit.document(), 1));
        QVERIFY(probe.IsSelected(edit.document(), 2));
        QVERIFY(probe.IsSelected(edit.document(), 4));
        QVERIFY(!probe.IsSelected(edit.document(), 5));  // the end is outside
        QCOMPARE(rec.count(), 0);
        QTextDocument loose;
        QVERIFY(!probe.IsSelected(&loose, 0));
        QVERIFY(rec.has(QStringLiteral("LxTextObjectHandlerBase"), QStringLiteral("pTextEdit != nullptr")));
        QVERIFY(!probe.IsSelected(nullptr, 0));
        QVERIFY(rec.has(QStringLiteral("LxTextObjectHandlerBase"), QStringLiteral("doc != nullptr")));
        QCOMPARE(probe.intrinsicSize(&loose, 0, QTextFormat()), QSizeF());
    }

    // Selections are drawn half transparent over the text's own colours.
    void selectionDrawing() {
        Doc d(300);
        d.doc.setPlainText(QStringLiteral("selected words here"));
        QAbstractTextDocumentLayout::Selection sel;
        sel.cursor = QTextCursor(&d.doc);
        sel.cursor.setPosition(0);
        sel.cursor.setPosition(8, QTextCursor::KeepAnchor);
        sel.format.setBackground(QColor(0, 0, 255));
        QImage img(300, 30, QImage::Format_ARGB32);
        img.fill(Qt::white);
        QPainter p(&img);
        QAbstractTextDocumentLayout::PaintContext ctx;
        ctx.selections << sel;
        d.pLayout->draw(&p, ctx);
        p.end();
        const QTextLine l = d.Line(0, 0);
        const QColor bg = img.pixelColor(1, qRound(l.y() + 1));
        QVERIFY2(bg.blue() == 255 && bg.red() > 100 && bg.red() < 140, qPrintable(bg.name()));
        QCOMPARE(img.pixelColor(qRound(l.cursorToX(12)), qRound(l.y() + 1)), QColor(Qt::white));
    }
};

QTEST_MAIN(TestRichTextLayout)
#include "tst_RichTextLayout.moc"
