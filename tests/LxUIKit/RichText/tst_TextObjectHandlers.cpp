// The inline object handlers: emoticon pictures, SVG icons, stock and user chips.

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

QFont TestFont() {
    QFont f(QStringLiteral("DejaVu Sans"));
    f.setPixelSize(14);
    return f;
}

int RedPixels(const QImage& img, const QRect& area) {
    return CountPixels(img, area, [](QColor c) { return c.red() > 150 && c.green() < 140 && c.blue() < 140; });
}

QByteArray SvgRect(const char* color) {
    const char* svg = "<svg xmlns='http://www.w3.org/2000/svg' width='10' height='10'><rect width='10' height='10'";
    return QByteArray(svg) + " fill='" + color + "'/></svg>";
}

}  // namespace

class TestTextObjectHandlers : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { lx_ui_theme::Manager::instance()->setTheme(lx_ui_theme::Manager::Light); }

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

QTEST_MAIN(TestTextObjectHandlers)
#include "tst_TextObjectHandlers.moc"
