// Rich text: a feed of 240 posts mixing text (Latin and CJK, short and long, several paragraphs)
// with stock, portfolio, user, link, picture, emoji and emoticon tokens. Every post is cut at three
// lines with an expand toggle; a click on a token shows a toast naming its kind and id, a hover
// shows the token in the status line. Rows are built lazily, when first painted, so the feed opens
// at once however long it is. The emoticon, emoji and chart pictures are drawn here, on first use.

#include "GalleryPages.h"

#include <LxCore/Post.h>
#include <LxCore/ProductPath.h>
#include <LxCore/SafeFunction.h>
#include <LxCore/SafeQtConnect.h>
#include <LxStdUI/FontToken.h>
#include <LxStdUI/ResProvider.h>
#include <LxStdUI/ThemeManager.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/LxLazyLoadWidget.h>
#include <LxUIKit/RichText/LxRichText.h>
#include <LxUIKit/RichText/LxRichTextLayout.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoji.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>
#include <LxUIKit/RichText/LxRichTextSnippetImage.h>
#include <LxUIKit/RichText/LxRichTextSnippetLink.h>
#include <LxUIKit/RichText/LxRichTextSnippetPortfolio.h>
#include <LxUIKit/RichText/LxRichTextSnippetStock.h>
#include <LxUIKit/RichText/LxRichTextSnippetText.h>
#include <LxUIKit/RichText/LxRichTextSnippetUser.h>

#include <QAbstractButton>
#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QRandomGenerator>
#include <QScrollArea>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextLayout>
#include <QVBoxLayout>
#include <QtMath>

namespace {

const int kPosts = 240;
const int kCollapsedLines = 3;
const int kFeedWidth = 680;

using Snippet = std::shared_ptr<CLxRichTextSnippetBase>;
using SnippetList = CLxRichText::SnippetList;

// ---- pictures drawn by the gallery --------------------------------------------------------------

QString SampleDir() { return core::product_path::GetCacheDir() + QStringLiteral("/gallery_richtext"); }

QString EmoticonPath(int i) { return SampleDir() + QStringLiteral("/emoticon_%1.png").arg(i); }
QString EmojiPath(int i) { return SampleDir() + QStringLiteral("/emoji_%1.png").arg(i); }
QString ChartPath(int i) { return SampleDir() + QStringLiteral("/chart_%1.png").arg(i); }

const int kEmoticons = 8;
const char* const kEmojiText[] = {"❤️", "⭐", "🔥", "✅", "🚀", "🌙"};
const int kEmoji = 6;

// A round face, 120 px (shown at 40: pictures are made at three times the display density).
void DrawEmoticon(int i, const QString& path) {
    static const QColor kFace[] = {QColor("#ffcc33"), QColor("#ffb347"), QColor("#ff8a65"), QColor("#9ccc65"),
                                   QColor("#4fc3f7"), QColor("#ba68c8"), QColor("#f06292"), QColor("#ffd54f")};
    QImage img(120, 120, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor(0, 0, 0, 60), 3));
    p.setBrush(kFace[i % kEmoticons]);
    p.drawEllipse(QRectF(6, 6, 108, 108));
    p.setPen(Qt::NoPen);
    p.setBrush(QColor("#3b2a1a"));
    const bool bWink = i % 4 == 2;
    p.drawEllipse(QRectF(36, 40, 12, i % 3 == 1 ? 6 : 16));
    if (bWink)
        p.drawRoundedRect(QRectF(70, 46, 16, 5), 2, 2);
    else
        p.drawEllipse(QRectF(72, 40, 12, i % 3 == 1 ? 6 : 16));
    QPen mouth(QColor("#3b2a1a"), 6, Qt::SolidLine, Qt::RoundCap);
    p.setPen(mouth);
    p.setBrush(Qt::NoBrush);
    switch (i % 4) {
    case 0: p.drawArc(QRectF(34, 44, 52, 44), -20 * 16, -140 * 16); break;  // smile
    case 1: p.drawLine(QPointF(44, 82), QPointF(76, 82)); break;            // straight
    case 2: p.drawArc(QRectF(34, 50, 52, 36), -10 * 16, -160 * 16); break;
    default: p.drawArc(QRectF(40, 76, 40, 30), 20 * 16, 140 * 16); break;  // frown
    }
    p.end();
    img.save(path);
}

void DrawEmoji(int i, const QString& path) {
    QImage img(120, 120, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    QPainterPath shape;
    switch (i) {
    case 0: {  // heart
        shape.moveTo(60, 104);
        shape.cubicTo(10, 70, 8, 30, 34, 22);
        shape.cubicTo(48, 18, 58, 28, 60, 38);
        shape.cubicTo(62, 28, 72, 18, 86, 22);
        shape.cubicTo(112, 30, 110, 70, 60, 104);
        p.setBrush(QColor("#e53950"));
        break;
    }
    case 1: {  // star
        for (int k = 0; k < 10; ++k) {
            const qreal r = k % 2 ? 22 : 54;
            const qreal a = M_PI / 5 * k - M_PI / 2;
            const QPointF pt(60 + r * std::cos(a), 64 + r * std::sin(a));
            k ? shape.lineTo(pt) : shape.moveTo(pt);
        }
        shape.closeSubpath();
        p.setBrush(QColor("#ffc107"));
        break;
    }
    case 2: {  // flame
        shape.moveTo(60, 8);
        shape.cubicTo(96, 44, 104, 70, 88, 96);
        shape.cubicTo(76, 116, 44, 116, 32, 96);
        shape.cubicTo(18, 72, 34, 52, 44, 40);
        shape.cubicTo(46, 58, 54, 62, 58, 60);
        shape.cubicTo(50, 40, 56, 22, 60, 8);
        QLinearGradient g(0, 0, 0, 120);
        g.setColorAt(0, QColor("#ffb300"));
        g.setColorAt(1, QColor("#e64a19"));
        p.setBrush(g);
        break;
    }
    case 3: {  // check
        p.setBrush(QColor("#2e9d4f"));
        p.drawRoundedRect(QRectF(8, 8, 104, 104), 22, 22);
        p.setPen(QPen(Qt::white, 14, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        p.drawPolyline(QPolygonF({QPointF(32, 62), QPointF(52, 82), QPointF(88, 40)}));
        break;
    }
    case 4: {  // rocket
        shape.moveTo(60, 6);
        shape.cubicTo(84, 26, 86, 62, 78, 86);
        shape.lineTo(42, 86);
        shape.cubicTo(34, 62, 36, 26, 60, 6);
        p.setBrush(QColor("#d8dee9"));
        p.drawPath(shape);
        p.setBrush(QColor("#e53950"));
        p.drawPolygon(QPolygonF({QPointF(42, 64), QPointF(24, 92), QPointF(44, 86)}));
        p.drawPolygon(QPolygonF({QPointF(78, 64), QPointF(96, 92), QPointF(76, 86)}));
        p.setBrush(QColor("#42a5f5"));
        p.drawEllipse(QRectF(50, 36, 20, 20));
        p.setBrush(QColor("#ff9800"));
        p.drawPolygon(QPolygonF({QPointF(48, 88), QPointF(60, 114), QPointF(72, 88)}));
        shape = QPainterPath();
        break;
    }
    default: {  // moon
        QPainterPath disc, cut;
        disc.addEllipse(QRectF(14, 14, 92, 92));
        cut.addEllipse(QRectF(40, 4, 84, 84));
        shape = disc.subtracted(cut);
        p.setBrush(QColor("#fdd835"));
        break;
    }
    }
    if (!shape.isEmpty())
        p.drawPath(shape);
    p.end();
    img.save(path);
}

// A small price chart; 600 x 300 shows at 200 x 100, 900 x 420 at 300 x 140.
void DrawChart(int i, const QString& path) {
    const QSize size = i == 0 ? QSize(600, 300) : QSize(900, 420);
    QImage img(size, QImage::Format_ARGB32_Premultiplied);
    img.fill(QColor("#f7f9fc"));
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QPen(QColor("#dde3ec"), 3));
    for (int k = 1; k < 4; ++k)
        p.drawLine(0, size.height() * k / 4, size.width(), size.height() * k / 4);
    QRandomGenerator rng(quint32(17 + i));
    QPolygonF line;
    qreal y = size.height() * 0.6;
    for (int x = 0; x <= size.width(); x += size.width() / 40) {
        y = qBound(20.0, y + (rng.bounded(100) - (i ? 56 : 44)) * size.height() / 700.0, size.height() - 20.0);
        line << QPointF(x, y);
    }
    QPolygonF area = line;
    area << QPointF(size.width(), size.height()) << QPointF(0, size.height());
    const QColor c = i ? QColor("#e0383e") : QColor("#14a05c");
    QColor fill = c;
    fill.setAlpha(50);
    p.setPen(Qt::NoPen);
    p.setBrush(fill);
    p.drawPolygon(area);
    p.setPen(QPen(c, 6));
    p.drawPolyline(line);
    p.end();
    img.save(path);
}

void EnsureSamplePictures() {
    QDir().mkpath(SampleDir());
    for (int i = 0; i < kEmoticons; ++i)
        if (!QFileInfo::exists(EmoticonPath(i)))
            DrawEmoticon(i, EmoticonPath(i));
    for (int i = 0; i < kEmoji; ++i)
        if (!QFileInfo::exists(EmojiPath(i)))
            DrawEmoji(i, EmojiPath(i));
    for (int i = 0; i < 2; ++i)
        if (!QFileInfo::exists(ChartPath(i)))
            DrawChart(i, ChartPath(i));
}

// ---- sample posts -------------------------------------------------------------------------------

struct Person {
    const char* nick;
    uint64_t id;
};
const Person kPeople[] = {{"Ann Lee", 10001}, {"陈小明", 10002},         {"TraderJoe", 10003},  {"王芳", 10004},
                          {"", 10005},        {"Mia <the bull>", 10006}, {"量化小助手", 10007}, {"Sam O'Neil", 10008}};
struct StockDef {
    const char* text;
    uint64_t id;
};
const StockDef kStocks[] = {{"$Tenvira(TNVR)$", 1000},   {"$Harbor Labs(HRBR)$", 1001}, {"$Vantix(VTX)$", 1002},
                            {"$云岭酒业(YLJY)$", 1004},  {"$Voltra(VLTR)$", 1003},      {"$集云网络(JYWL)$", 1005},
                            {"$Cloverway(CLVW)$", 1006}, {"$青川汽车(QCQC)$", 1007}};
struct PortfolioDef {
    const char* name;
    const char* code;
    uint64_t id;
};
const PortfolioDef kPortfolios[] = {{"Tech Leaders", "TL1", 501}, {"红利组合", "HL8", 502}, {"AI & Chips", "AIC", 503}};
struct LinkDef {
    const char* title;
    const char* url;
};
const LinkDef kLinks[] = {{"Q3 earnings call", "https://example.com/ir/q3-call"},
                          {"年报全文", "https://example.com/ir/annual-report"},
                          {"", "https://example.com/research/notes/2026/semis-outlook?ref=feed&lang=en"},
                          {"market rules", "https://example.com/help/rules"}};
const char* const kLatin[] = {
    "Markets opened higher this morning as tech led the rebound. ",
    "I added a little more on the dip, keeping the position small. ",
    "Volume is thin, so I would not read too much into this move. ",
    "Earnings beat on revenue but guidance was soft; the stock gave back its gains. ",
    "Watching the 200-day average closely — a clean break would change my view. ",
    "Long-term holders should ignore the noise. ",
    "Anyone else think the options market is pricing in too much volatility? ",
    "Cash is a position too. ",
    "Note: <b>this is not bold</b> and &amp; stays as typed. ",
    "Spread   out   words   keep   their   blanks. ",
};
const char* const kCjk[] = {
    "今天大盘高开，科技股领涨，成交量明显放大。", "我在回调时小仓位加了一点，继续观察。",
    "财报收入超预期，但指引偏弱，股价冲高回落。", "长线持有的朋友不用太在意短期波动。",
    "北向资金连续三天净流入，情绪在修复。",       "这个位置不追高，等回踩再说。",
    "半导体板块整体估值已经不便宜了，",           "有没有人一起讨论一下新能源车的价格战？",
};

Snippet MakeText(const QString& s) { return std::make_shared<CLxRichTextSnippetText>(s); }

Snippet RandomToken(QRandomGenerator& rng) {
    switch (rng.bounded(9)) {
    case 0:
    case 1: {
        const StockDef& d = kStocks[rng.bounded(int(std::size(kStocks)))];
        auto s = std::make_shared<CLxRichTextSnippetStock>();
        s->SetStockIdAndDisplayText(d.id, QString::fromUtf8(d.text));
        return s;
    }
    case 2: {
        const Person& d = kPeople[rng.bounded(int(std::size(kPeople)))];
        auto s = std::make_shared<CLxRichTextSnippetUser>();
        s->SetUserData(d.id, QString::fromUtf8(d.nick));
        s->SetDisplayText(QStringLiteral("@") + s->GetDisplayText());
        return s;
    }
    case 3: {
        const PortfolioDef& d = kPortfolios[rng.bounded(int(std::size(kPortfolios)))];
        auto s = std::make_shared<CLxRichTextSnippetPortfolio>();
        s->SetPortfolioData(d.id, QString::fromUtf8(d.name), QString::fromLatin1(d.code));
        return s;
    }
    case 4: {
        const LinkDef& d = kLinks[rng.bounded(int(std::size(kLinks)))];
        auto s = std::make_shared<CLxRichTextSnippetLink>();
        s->SetLinkData(QString::fromUtf8(d.title), QString::fromLatin1(d.url), CLxRichTextDataLink::LinkType_Web);
        return s;
    }
    case 5:
    case 6: {
        const int i = rng.bounded(kEmoticons);
        return std::make_shared<CLxRichTextSnippetEmoticon>(uint32_t(i + 1), EmoticonPath(i));
    }
    default: {
        const int i = rng.bounded(kEmoji);
        return std::make_shared<CLxRichTextSnippetEmoji>(QString::fromUtf8(kEmojiText[i]), EmojiPath(i));
    }
    }
}

QString Sentence(QRandomGenerator& rng, bool bCjk) {
    return bCjk ? QString::fromUtf8(kCjk[rng.bounded(int(std::size(kCjk)))])
                : QString::fromUtf8(kLatin[rng.bounded(int(std::size(kLatin)))]);
}

struct Post {
    int i32Index = 0;
    Person author;
    QString strTime;
    SnippetList vecSnippets;
    bool bHtml = false;  // a note written as HTML (MarketNoteHtml) instead of snippets
};

// Post 2 is a note in plain HTML, shown through setText: a list and a small table, as any Qt text
// widget lays them out. Colours come from the current theme, so it is built again on a change.
constexpr int kHtmlPost = 1;
QString MarketNoteHtml() {
    lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
    const QString up = res->color(QStringLiteral("ct_text_green")).name();
    const QString down = res->color(QStringLiteral("ct_text_red")).name();
    const QString dim = res->color(QStringLiteral("ct_text_h3")).name();
    const QString row = QStringLiteral(
        "<tr><td>%1</td><td>%2</td><td align='right'>%3</td>"
        "<td align='right' style='color:%4'>%5</td></tr>");
    return QStringLiteral(
               "<p>Weekly desk note from Elsa Marten:</p>"
               "<ul><li>Rotation out of retail into industrial robotics continued.</li>"
               "<li>Ivo Brandt expects a quieter week before the rate decision.</li>"
               "<li>Watch list:<ol><li>Northwind Robotics</li><li>Bluefjord Energy</li></ol></li></ul>"
               "<table cellspacing='0' cellpadding='3'>"
               "<tr style='color:%1'><td>Company</td><td>Ticker</td><td>Last</td><td>Change</td></tr>")
               .arg(dim) +
           row.arg(QStringLiteral("Northwind Robotics"), QStringLiteral("NWRB"), QStringLiteral("42.10"), up,
                   QStringLiteral("+3.4%")) +
           row.arg(QStringLiteral("Bluefjord Energy"), QStringLiteral("BFJE"), QStringLiteral("17.85"), down,
                   QStringLiteral("-1.2%")) +
           row.arg(QStringLiteral("Quillmark Foods"), QStringLiteral("QMKF"), QStringLiteral("8.02"), up,
                   QStringLiteral("+0.6%")) +
           QStringLiteral("</table>");
}

Post MakePost(int index) {
    QRandomGenerator rng(quint32(1000 + index));
    Post post;
    post.i32Index = index;
    post.author = kPeople[rng.bounded(int(std::size(kPeople)))];
    post.strTime = rng.bounded(3) ? QStringLiteral("%1 min").arg(1 + rng.bounded(59))
                                  : QStringLiteral("%1 h").arg(1 + rng.bounded(23));
    if (index == kHtmlPost) {
        post.author = Person{"Elsa Marten", 10009};
        post.bHtml = true;
        return post;
    }
    const int style = index % 6;  // short, medium, long, paragraphs, picture, token-heavy
    const bool bCjkFirst = rng.bounded(2) == 0;
    SnippetList& list = post.vecSnippets;
    if (style == 0) {
        list.push_back(MakeText(Sentence(rng, bCjkFirst)));
        list.push_back(RandomToken(rng));
        return post;
    }
    const int parts = style == 1 ? 4 : style == 5 ? 14 : 9 + rng.bounded(6);
    for (int k = 0; k < parts; ++k) {
        QString text = Sentence(rng, (k % 2 == 0) == bCjkFirst);
        if (style == 3 && k > 0 && k % 3 == 0)
            text.prepend(QStringLiteral("\n\n"));
        if (style != 5 || k % 3 == 0)
            list.push_back(MakeText(text));
        if (rng.bounded(3) != 0 || style == 5) {
            list.push_back(RandomToken(rng));
            list.push_back(MakeText(QStringLiteral(" ")));
        }
    }
    if (style == 4) {
        list.push_back(MakeText(QStringLiteral("\n")));
        list.push_back(std::make_shared<CLxRichTextSnippetImage>(ChartPath(index % 2)));
    }
    return post;
}

// ---- describing tokens ------------------------------------------------------------------------

QString KindName(uint32_t type) {
    switch (type) {
    case LxRichTextDataType_Text: return QCoreApplication::translate("RichTextPage", "Text");
    case LxRichTextDataType_Image: return QCoreApplication::translate("RichTextPage", "Picture");
    case LxRichTextDataType_User: return QCoreApplication::translate("RichTextPage", "User");
    case LxRichTextDataType_Stock: return QCoreApplication::translate("RichTextPage", "Stock");
    case LxRichTextDataType_Portfolio: return QCoreApplication::translate("RichTextPage", "Portfolio");
    case LxRichTextDataType_Emotion: return QCoreApplication::translate("RichTextPage", "Emoticon");
    case LxRichTextDataType_Link: return QCoreApplication::translate("RichTextPage", "Link");
    case LxRichTextDataType_Emoji: return QCoreApplication::translate("RichTextPage", "Emoji");
    default: return QCoreApplication::translate("RichTextPage", "Token");
    }
}

QString TokenId(const Snippet& s) {
    if (auto* p = dynamic_cast<CLxRichTextDataUser*>(s.get()))
        return QString::number(p->GetUserID());
    if (auto* p = dynamic_cast<CLxRichTextDataStock*>(s.get()))
        return QString::number(p->GetStockID());
    if (auto* p = dynamic_cast<CLxRichTextDataPortfolio*>(s.get()))
        return QString::number(p->GetPortfolioID());
    if (auto* p = dynamic_cast<CLxRichTextDataEmotion*>(s.get()))
        return QString::number(p->GetEmoticonID());
    if (auto* p = dynamic_cast<CLxRichTextDataLink*>(s.get()))
        return p->GetUrl();
    if (auto* p = dynamic_cast<CLxRichTextDataEmoji*>(s.get()))
        return p->GetEmojiText();
    if (auto* p = dynamic_cast<CLxRichTextDataImage*>(s.get()))
        return QFileInfo(p->GetImagePath()).fileName();
    return QString();
}

QString Describe(const Snippet& s) {
    ILxRichTextData* data = s ? s->GetData() : nullptr;
    if (!data)
        return QString();
    return QCoreApplication::translate("RichTextPage", "%1 · id %2 · %3")
        .arg(KindName(s->GetRichTextType()), TokenId(s), data->ToPlainText());
}

// Where the token with that snippet index is shown, in the label's coordinates.
QPoint TokenPoint(CLxRichText* label, int index) {
    QTextDocument* doc = label->document();
    doc->documentLayout()->documentSize();
    for (QTextBlock b = doc->begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment f = it.fragment();
            if (f.charFormat().anchorHref() != QString::number(index))
                continue;
            const int rel = f.position() - b.position();
            const QTextLine line = b.layout()->lineForTextPosition(rel);
            if (!line.isValid())
                return QPoint(-1, -1);
            const qreal x = (line.cursorToX(rel) + line.cursorToX(rel + 1)) / 2;
            return QPointF(x, b.layout()->position().y() + line.y() + line.height() / 2).toPoint() +
                   label->contentsRect().topLeft();
        }
    return QPoint(-1, -1);
}

// ---- widgets ----------------------------------------------------------------------------------

// A text button in the link colour of the current theme.
class LinkButton : public QAbstractButton {
public:
    explicit LinkButton(QWidget* parent) : QAbstractButton(parent) {
        setCursor(Qt::PointingHandCursor);
        setFont(LFontTokenLoader::font(QStringLiteral("caption1")));
    }
    QSize sizeHint() const override {
        const QFontMetrics fm(font());
        return QSize(fm.horizontalAdvance(text()) + 4, fm.height() + 4);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setPen(lx_ui_res::Provider::instance()->color(QStringLiteral("ct_text_link")));
        p.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text());
    }
};

// The author's initial on a coloured disc, the name and the post's number and age, painted in
// the current theme's colours.
class PostHeader : public QWidget {
public:
    PostHeader(const QString& name, uint64_t id, const QString& meta, QWidget* parent)
        : QWidget(parent), m_strName(name), m_strMeta(meta), m_strInitial(name.left(1)) {
        static const char* const kColors[] = {"#5c6bc0", "#26a69a", "#ef6c00", "#8e24aa", "#43a047", "#e53935"};
        m_color = QColor(kColors[id % std::size(kColors)]);
        if (m_strInitial.isEmpty() || m_strInitial == QLatin1String("<"))
            m_strInitial = QStringLiteral("#");
        setFixedHeight(38);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        const QRectF disc(1, 1, 36, 36);
        p.setPen(Qt::NoPen);
        p.setBrush(m_color);
        p.drawEllipse(disc);
        p.setPen(Qt::white);
        p.setFont(LFontTokenLoader::font(QStringLiteral("title3")));
        p.drawText(disc, Qt::AlignCenter, m_strInitial);
        const int x = 48;
        p.setPen(res->color(QStringLiteral("ct_text_h1")));
        p.drawText(QRect(x, 0, width() - x, 20), Qt::AlignLeft | Qt::AlignVCenter, m_strName);
        p.setPen(res->color(QStringLiteral("ct_text_h3")));
        p.setFont(LFontTokenLoader::font(QStringLiteral("caption1")));
        p.drawText(QRect(x, 20, width() - x, 18), Qt::AlignLeft | Qt::AlignVCenter, m_strMeta);
    }

private:
    QString m_strName;
    QString m_strMeta;
    QString m_strInitial;
    QColor m_color;
};

class RichTextPage;

class PostCard : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(RichTextPage)

public:
    PostCard(const Post& post, RichTextPage* page);
    CLxRichText* Label() const { return m_pLabel; }
    void SetExpanded(bool bExpanded) {
        if (m_bHtmlOnly)
            return;
        m_bExpanded = bExpanded;
        m_pLabel->SetMaxLine(bExpanded ? 0 : kCollapsedLines);
        UpdateToggle();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        p.setPen(QPen(res->color(QStringLiteral("ct_line_separator")), 1));
        p.setBrush(res->color(QStringLiteral("ct_bg_secondary")));
        p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
    }
    void resizeEvent(QResizeEvent* e) override {
        QWidget::resizeEvent(e);
        // After the layout has placed the label at its new width.
        QPointer<PostCard> self(this);
        core::post::ToMain([self] {
            if (self)
                self->UpdateToggle();
        });
    }

private:
    // "Expand" only when the text is really cut at this width.
    void UpdateToggle() {
        if (m_bHtmlOnly)
            return;
        if (m_bExpanded) {
            m_pToggle->setText(tr("Collapse"));
            m_pToggle->setVisible(true);
            return;
        }
        m_pLabel->GetLineCount();  // lays the label out at its current width
        m_pToggle->setText(tr("Expand"));
        m_pToggle->setVisible(!m_pLabel->GetLayout()->IsAllTextShown());
    }

    CLxRichText* m_pLabel = nullptr;
    LinkButton* m_pToggle = nullptr;
    bool m_bExpanded = false;
    bool m_bHtmlOnly = false;
};

class RichTextPage : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(RichTextPage)

public:
    explicit RichTextPage(QWidget* parent) : QWidget(parent) {
        EnsureSamplePictures();
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(24, 20, 24, 12);
        layout->setSpacing(8);
        auto* title = new QLabel(tr("Rich text"), this);
        title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
        auto* hint =
            new QLabel(tr("%1 posts with stocks, portfolios, mentions, links, pictures, emoji and emoticons, each cut "
                          "at %2 lines. Click a token for a toast, hover one to see it below, select text and copy "
                          "it with Ctrl+C. Rows are built when first painted.")
                           .arg(kPosts)
                           .arg(kCollapsedLines),
                       this);
        hint->setProperty("role", QStringLiteral("hint"));
        hint->setWordWrap(true);
        m_pStatus = new QLabel(this);
        m_pStatus->setObjectName(QStringLiteral("RichTextStatus"));
        m_pStatus->setProperty("role", QStringLiteral("hint"));
        m_pCounter = new QLabel(this);
        m_pCounter->setObjectName(QStringLiteral("RichTextCounter"));
        m_pCounter->setProperty("role", QStringLiteral("hint"));
        auto* statusRow = new QHBoxLayout;
        statusRow->addWidget(m_pStatus, 1);
        statusRow->addWidget(m_pCounter);
        layout->addWidget(title);
        layout->addWidget(hint);
        layout->addLayout(statusRow);

        m_pScroll = new QScrollArea(this);
        m_pScroll->setObjectName(QStringLiteral("RichTextFeed"));
        m_pScroll->setWidgetResizable(true);
        m_pScroll->setFrameShape(QFrame::NoFrame);
        auto* content = new QWidget(m_pScroll);
        auto* outer = new QHBoxLayout(content);
        outer->setContentsMargins(0, 4, 0, 16);
        auto* column = new QWidget(content);
        column->setMaximumWidth(kFeedWidth);
        m_pRows = new QVBoxLayout(column);
        m_pRows->setContentsMargins(0, 0, 0, 0);
        m_pRows->setSpacing(10);
        outer->addStretch(1);
        outer->addWidget(column, 100);
        outer->addStretch(1);
        for (int i = 0; i < kPosts; ++i) {
            auto holder = std::make_shared<QPointer<core::pattern::CLazyLoadWidget>>();
            auto* lazy = new core::pattern::CLazyLoadWidget(
                column, core::CSafeFunction<QWidget*()>(this, [this, i, holder]() -> QWidget* {
                    auto* card = new PostCard(MakePost(i), this);
                    m_vecCards.push_back(card);
                    if (*holder)
                        (*holder)->setMinimumHeight(0);  // the card's own height from now on
                    UpdateCounter();
                    return card;
                }));
            *holder = lazy;
            lazy->SetCreateMode(core::pattern::CLazyLoadWidget::CreateOnPaint);
            lazy->setMinimumHeight(132);  // a typical collapsed post, until the real one exists
            m_vecRows.push_back(lazy);
            m_pRows->addWidget(lazy);
        }
        m_pRows->addStretch(1);
        m_pScroll->setWidget(content);
        layout->addWidget(m_pScroll, 1);
        UpdateCounter();
        ShowStatus(nullptr);
        StyleScrollBar();
        LX_SAFE_CONNECT_IN("Gallery", lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                           [this] { StyleScrollBar(); });
    }

    void OnClicked(const Snippet& s) {
        if (!s)
            return;
        gui::ShowSimpleToast(QStringLiteral("%1 %2").arg(KindName(s->GetRichTextType()), TokenId(s)), TriBool::True,
                             1500);
    }
    void ShowStatus(const Snippet& s) {
        m_pStatus->setText(s ? tr("Hovering: %1").arg(Describe(s)) : tr("Hover a token to see it here."));
    }

    // Opens the second post, points at a token of the first and clicks one of the third.
    void Demo() {
        for (int i = 0; i < 4 && i < int(m_vecRows.size()); ++i)
            if (m_vecRows[size_t(i)])
                m_vecRows[size_t(i)]->EnsureCreateContent();
        QPointer<RichTextPage> self(this);
        core::post::ToMainDelay(
            [self] {
                if (!self || self->m_vecCards.size() < 3)
                    return;
                self->m_vecCards[1]->SetExpanded(true);
                auto hover = [](CLxRichText* label, bool bClick) {
                    const CLxRichText::SnippetList& list = label->GetRichTextData();
                    for (size_t k = 0; k < list.size(); ++k) {
                        if (!list[k] || list[k]->GetRichTextType() == LxRichTextDataType_Text)
                            continue;
                        const QPoint at = TokenPoint(label, int(k));
                        if (at.x() < 0)
                            continue;
                        QMouseEvent move(QEvent::MouseMove, at, label->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                                         Qt::NoModifier);
                        QApplication::sendEvent(label, &move);
                        if (bClick) {
                            QMouseEvent press(QEvent::MouseButtonPress, at, label->mapToGlobal(at), Qt::LeftButton,
                                              Qt::LeftButton, Qt::NoModifier);
                            QApplication::sendEvent(label, &press);
                            QMouseEvent release(QEvent::MouseButtonRelease, at, label->mapToGlobal(at), Qt::LeftButton,
                                                Qt::NoButton, Qt::NoModifier);
                            QApplication::sendEvent(label, &release);
                        }
                        return;
                    }
                };
                hover(self->m_vecCards[2]->Label(), true);
                hover(self->m_vecCards[0]->Label(), false);
            },
            200);
    }

private:
    // A slim scroll bar in the theme's colours (the window's sheet would give it a plain background).
    void StyleScrollBar() {
        lx_ui_res::Provider* res = lx_ui_res::Provider::instance();
        m_pScroll->verticalScrollBar()->setStyleSheet(
            QStringLiteral("QScrollBar:vertical { background:transparent; width:10px; margin:0; border:none; }"
                           "QScrollBar::handle:vertical { background:%1; border-radius:4px; min-height:40px;"
                           " margin:1px 2px; }"
                           "QScrollBar::handle:vertical:hover { background:%2; }"
                           "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height:0; border:none; }"
                           "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background:none; }")
                .arg(res->colorString(QStringLiteral("ct_border")), res->colorString(QStringLiteral("ct_text_h3"))));
    }

    void UpdateCounter() { m_pCounter->setText(tr("posts built: %1 of %2").arg(m_vecCards.size()).arg(kPosts)); }

    QPointer<QLabel> m_pStatus;
    QPointer<QLabel> m_pCounter;
    QPointer<QScrollArea> m_pScroll;
    QVBoxLayout* m_pRows = nullptr;
    std::vector<QPointer<core::pattern::CLazyLoadWidget>> m_vecRows;
    std::vector<QPointer<PostCard>> m_vecCards;
};

PostCard::PostCard(const Post& post, RichTextPage* page) {
    setAttribute(Qt::WA_StyledBackground, false);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(14, 12, 14, 10);
    v->setSpacing(6);
    const QString nick = post.author.nick[0] ? QString::fromUtf8(post.author.nick) : QString::number(post.author.id);
    v->addWidget(new PostHeader(nick, post.author.id,
                                QStringLiteral("#%1 · %2").arg(post.i32Index + 1).arg(post.strTime), this));

    m_pLabel = new CLxRichText(this);
    m_pLabel->setObjectName(QStringLiteral("PostText_%1").arg(post.i32Index));
    m_pLabel->SetMaxLine(kCollapsedLines);
    m_pLabel->SetRichTextData(post.vecSnippets);
    v->addWidget(m_pLabel);

    m_pToggle = new LinkButton(this);
    m_pToggle->setText(tr("Expand"));
    v->addWidget(m_pToggle, 0, Qt::AlignLeft);
    if (post.bHtml) {
        // Shown whole: Qt's own layout draws the list and the table.
        m_bExpanded = true;
        m_pLabel->SetMaxLine(0);
        m_pLabel->setText(MarketNoteHtml());
        m_pToggle->hide();
        m_bHtmlOnly = true;
        LX_SAFE_CONNECT_IN("Gallery", lx_ui_theme::Manager::instance(), &lx_ui_theme::Manager::themeChanged, this,
                           [this] { m_pLabel->setText(MarketNoteHtml()); });
    }

    QPointer<RichTextPage> pPage(page);
    LX_SAFE_CONNECT_IN("Gallery", m_pLabel, &CLxRichText::Clicked, this, [pPage](Snippet s, QPoint) {
        if (pPage)
            pPage->OnClicked(s);
    });
    LX_SAFE_CONNECT_IN("Gallery", m_pLabel, &CLxRichText::Hovered, this, [pPage](Snippet s, QPoint) {
        if (pPage)
            pPage->ShowStatus(s);
    });
    LX_SAFE_CONNECT_IN("Gallery", m_pToggle, &QAbstractButton::clicked, this, [this] { SetExpanded(!m_bExpanded); });
}

}  // namespace

QWidget* CreateRichTextPage(QWidget* parent) { return new RichTextPage(parent); }

void DemoRichTextPage(QWidget* page) {
    if (auto* p = dynamic_cast<RichTextPage*>(page))
        p->Demo();
}
