#include <LxUIKit/RichText/LxRichText.h>

#include <LxStdUI/LWidgetUtil.h>
#include <LxStdUI/ResProvider.h>
#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/RichText/ILxRichTextData.h>
#include <LxUIKit/RichText/LxRichTextLayout.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>

#include <QtWidgets/private/qwidget_p.h>
#include <QtWidgets/private/qwidgettextcontrol_p.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QGesture>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextFragment>
#include <QTextLayout>
#include <QtMath>

#include <cmath>

static_assert(CLxRichText::kEmotionObjectType == QTextFormat::UserObject + 4, "emoticon object type");

namespace {

// Copies as the user reads it: line breaks as new lines, no zero-width spaces, pictures and
// emoticons as their text form (taken from their snippets).
class CLxRichTextControl : public QWidgetTextControl {
public:
    using TextForHref = std::function<QString(const QString&)>;
    CLxRichTextControl(QTextDocument* pDoc, QObject* pParent, TextForHref fnText)
        : QWidgetTextControl(pDoc, pParent), m_fnText(std::move(fnText)) {}

    QMimeData* createMimeDataFromSelection() const override {
        const QTextCursor cursor = textCursor();
        if (!cursor.hasSelection())
            return QWidgetTextControl::createMimeDataFromSelection();
        // Qt's own mime data fills its text lazily from the fragment; ours is filled here.
        auto* pData = new QMimeData;
        pData->setHtml(QTextDocumentFragment(cursor).toHtml());
        const int start = cursor.selectionStart(), end = cursor.selectionEnd();
        QString text;
        QString lastObjectHref;
        for (QTextBlock b = document()->findBlock(start); b.isValid() && b.position() < end; b = b.next()) {
            if (b.position() > start)
                text += QLatin1Char('\n');
            for (auto it = b.begin(); !it.atEnd(); ++it) {
                const QTextFragment f = it.fragment();
                const int fs = qMax(start, f.position()), fe = qMin(end, f.position() + f.length());
                if (fs >= fe)
                    continue;
                const QTextCharFormat fmt = f.charFormat();
                if (fmt.isImageFormat() || fmt.objectType() != QTextFormat::NoObject) {
                    // One object per snippet, even when a picture spans several characters.
                    if (fmt.anchorHref() != lastObjectHref || fmt.anchorHref().isEmpty())
                        text += m_fnText(fmt.anchorHref()).repeated(fmt.anchorHref().isEmpty() ? fe - fs : 1);
                    lastObjectHref = fmt.anchorHref();
                    continue;
                }
                lastObjectHref.clear();
                QString part = f.text().mid(fs - f.position(), fe - fs);
                part.remove(QChar(0x200B));
                part.replace(QChar::LineSeparator, QLatin1Char('\n'));
                part.replace(QChar::Nbsp, QLatin1Char(' '));
                text += part;
            }
        }
        pData->setText(text);
        return pData;
    }

private:
    TextForHref m_fnText;
};

QTextOption::WrapMode ToQtWrap(CLxRichText::WrapMode mode) {
    switch (mode) {
    case CLxRichText::NoWrap: return QTextOption::NoWrap;
    case CLxRichText::WordWrap: return QTextOption::WordWrap;
    case CLxRichText::WrapAnywhere: return QTextOption::WrapAnywhere;
    default: return QTextOption::WrapAtWordBoundaryOrAnywhere;
    }
}

Qt::Alignment ToQtAlignment(CLxRichText::TextAlignment alignment) {
    switch (alignment) {
    case CLxRichText::AlignCenter: return Qt::AlignHCenter;
    case CLxRichText::AlignRight: return Qt::AlignRight;
    case CLxRichText::AlignJustify: return Qt::AlignJustify;
    default: return Qt::AlignLeft;
    }
}

// Characters a snippet's shown text makes in the document: an entity or a tag (only <br> occurs)
// is one character.
int ShownLength(const QString& shown) {
    int n = 0;
    for (int i = 0; i < shown.size(); ++i, ++n) {
        const QChar c = shown.at(i);
        if (c == QLatin1Char('&') || c == QLatin1Char('<')) {
            const int close = shown.indexOf(c == QLatin1Char('&') ? QLatin1Char(';') : QLatin1Char('>'), i);
            if (close > i)
                i = close;
        }
    }
    return n;
}

}  // namespace

CLxRichText::CLxRichText(QWidget* pParent) : QFrame(pParent) { init(); }

CLxRichText::~CLxRichText() = default;

void CLxRichText::init() {
    static const int s_i32MetaType = qRegisterMetaType<std::shared_ptr<CLxRichTextSnippetBase>>();
    Q_UNUSED(s_i32MetaType);
    m_spConfig = std::make_shared<LxRichTextConfig>();

    setSizePolicy(QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred, QSizePolicy::Label));
    setMouseTracking(true);  // hovers are reported without a button pressed
    EnsureTextControl();
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instancePtr(), &lx_ui_theme::Manager::themeChanged, this,
                         &CLxRichText::OnThemeChanged);
    InitDocumentForCalculateSize();
    if (LXUIKIT_ASSERT(m_pLayout != nullptr))
        m_pLayout->SetEllipsisTextColor(m_spConfig->strTextColor);
    if (m_pMeasureLayout)
        m_pMeasureLayout->SetEllipsisTextColor(m_spConfig->strTextColor);
}

// The document, its layout and the emoticon handler; the text control on top, as Qt's label has.
void CLxRichText::EnsureTextControl() {
    if (m_pControl)
        return;
    auto* pDoc = new QTextDocument(this);
    auto* pLayout = new CLxRichTextLayout(pDoc);
    SetupDocument(pDoc, pLayout);
    m_pDoc = pDoc;
    m_pLayout = pLayout;
    QPointer<CLxRichText> self(this);
    auto* pControl = new CLxRichTextControl(pDoc, this, [self](const QString& href) {
        auto snippet = self ? self->SnippetForHref(href) : nullptr;
        ILxRichTextData* pData = snippet ? snippet->GetData() : nullptr;
        return pData ? pData->ToPlainText() : QString();
    });
    pDoc->setParent(pControl);
    m_pControl = pControl;
    pControl->setTextInteractionFlags(m_bSelectEnable ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                      : Qt::NoTextInteraction);
    pControl->setPalette(palette());
    pControl->setFocus(hasFocus());
    setFocusPolicy(m_bSelectEnable ? Qt::ClickFocus : Qt::NoFocus);
    LXUIKIT_SAFE_CONNECT(pControl, &QWidgetTextControl::updateRequest, this, [this] { update(); });
    m_bTextLayoutDirty = true;
}

bool CLxRichText::InitDocumentForCalculateSize() {
    if (m_pDocForCalculateSize)
        return true;
    auto* pDoc = new QTextDocument(this);
    auto* pLayout = new CLxRichTextLayout(pDoc);
    SetupDocument(pDoc, pLayout);
    m_pDocForCalculateSize = pDoc;
    m_pMeasureLayout = pLayout;
    m_bMeasureDocDirty = true;
    return true;
}

void CLxRichText::SetupDocument(QTextDocument* pDoc, CLxRichTextLayout* pLayout) {
    pDoc->setUndoRedoEnabled(false);
    pDoc->setDocumentMargin(0);
    pDoc->setDefaultFont(font());
    pDoc->setDocumentLayout(pLayout);
    QAbstractTextDocumentLayout* layout = pDoc->documentLayout();
    if (LXUIKIT_ASSERT(layout != nullptr))
        layout->registerHandler(kEmotionObjectType, CreateLxEmotionObjectHandler(pLayout));
    QTextOption option = pDoc->defaultTextOption();
    option.setWrapMode(ToQtWrap(m_enWrapMode));
    option.setAlignment(ToQtAlignment(m_enAlignment));
    pDoc->setDefaultTextOption(option);
    ApplyLimits(pLayout);
}

void CLxRichText::ApplyLimits(CLxRichTextLayout* pLayout) {
    if (!pLayout)
        return;
    pLayout->SetMaxLineCount(m_i32MaxLine);
    pLayout->SetShowEllipsis(m_bShowEllipsis);
    pLayout->SetMaxHeight(m_u32TextMaxHeight);
    if (m_spConfig)
        pLayout->SetEllipsisTextColor(m_spConfig->strTextColor);
    pLayout->Relayout();
}

// Emoticon images carry the marker in their title, which the HTML reader keeps as the tool tip;
// they become objects of the emoticon type, without a tool tip.
void CLxRichText::SetEmotionObjectType(QTextDocument* pDoc) {
    if (!pDoc)
        return;
    std::vector<std::pair<std::pair<int, int>, QTextCharFormat>> changes;
    for (QTextBlock b = pDoc->begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment f = it.fragment();
            QTextCharFormat fmt = f.charFormat();
            if (!fmt.isImageFormat() || fmt.toolTip() != CLxRichTextSnippetEmoticon::m_kStrEmotionFlag)
                continue;
            fmt.clearProperty(QTextFormat::TextToolTip);
            fmt.setObjectType(kEmotionObjectType);
            changes.push_back({{f.position(), f.position() + f.length()}, fmt});
        }
    for (const auto& change : changes) {
        QTextCursor c(pDoc);
        c.setPosition(change.first.first);
        c.setPosition(change.first.second, QTextCursor::KeepAnchor);
        c.setCharFormat(change.second);
    }
}

void CLxRichText::SetHtmlInto(QTextDocument* pDoc, const QString& strHtml) {
    if (!pDoc)
        return;
    if (strHtml.isEmpty())
        pDoc->clear();
    else
        pDoc->setHtml(strHtml);
    SetEmotionObjectType(pDoc);
}

QString CLxRichText::GetFormatHtml() {
    if (m_vecSnippets.empty() || !m_spConfig)
        return QString();
    QString html;
    for (size_t i = 0; i < m_vecSnippets.size(); ++i) {
        const auto& snippet = m_vecSnippets[i];
        if (!snippet)
            continue;
        snippet->CreatHtml(unsigned(i), m_spConfig);
        html += snippet->GetHtml();
    }
    return html;
}

void CLxRichText::SetRichTextData(const SnippetList& vecSnippets) {
    m_vecSnippets = vecSnippets;
    m_pLastHovered = nullptr;
    LXUIKIT_ASSERT_RETURN(m_pDocForCalculateSize);
    setText(GetFormatHtml());
    m_bHtmlFromSnippets = true;
}

void CLxRichText::SetConfig(std::shared_ptr<LxRichTextConfig> spConfig) {
    m_spConfig = std::move(spConfig);
    LXUIKIT_ASSERT_RETURN(m_pDocForCalculateSize);
    if (m_spConfig) {
        if (m_pLayout)
            m_pLayout->SetEllipsisTextColor(m_spConfig->strTextColor);
        if (m_pMeasureLayout)
            m_pMeasureLayout->SetEllipsisTextColor(m_spConfig->strTextColor);
    }
    setText(GetFormatHtml());
    m_bHtmlFromSnippets = true;
}

void CLxRichText::ResetHtml() {
    m_bThemeDirty = false;
    setText(GetFormatHtml());
    m_bHtmlFromSnippets = true;
}

QString CLxRichText::text() const {
    const_cast<CLxRichText*>(this)->FlushThemeChange();
    return m_strText;
}

void CLxRichText::setText(const QString& strHtml) {
    m_strText = strHtml;
    m_bHtmlFromSnippets = false;
    // Setting the control's cursor makes it lay the document out for the caret: only when needed.
    if (m_pControl && m_pControl->textCursor().hasSelection()) {
        QTextCursor c = m_pControl->textCursor();
        c.clearSelection();
        m_pControl->setTextCursor(c);
    }
    SetHtmlInto(m_pDoc, strHtml);
    m_bMeasureDocDirty = true;
    ContentChanged();
}

void CLxRichText::Clear() {
    m_vecSnippets.clear();
    m_pLastHovered = nullptr;
    setText(QString());
}

void CLxRichText::clearContents() { Clear(); }

QString CLxRichText::textWithEmotionID() const {
    QString out;
    for (const auto& snippet : m_vecSnippets) {
        if (!snippet)
            continue;
        if (snippet->GetRichTextType() == LxRichTextDataType_Emotion) {
            if (auto* pEmotion = dynamic_cast<const CLxRichTextDataEmotion*>(snippet.get())) {
                out += QStringLiteral("#emotion_%1#").arg(pEmotion->GetEmoticonID());
                continue;
            }
        }
        if (ILxRichTextData* pData = snippet->GetData())
            out += pData->ToPlainText();
    }
    return out;
}

QTextDocument* CLxRichText::document() const {
    const_cast<CLxRichText*>(this)->FlushThemeChange();
    return m_pDoc;
}

void CLxRichText::ContentChanged() {
    m_bTextLayoutDirty = true;
    InvalidateSizes();
    updateGeometry();
    update();
}

void CLxRichText::InvalidateSizes() {
    m_bValidHints = false;
    for (auto& entry : m_sizeCache)
        entry.i32Width = -1;
}

void CLxRichText::OnThemeChanged(lx_ui_theme::Manager::Theme) {
    // HTML given through setText carries its own colours: there is nothing to build again.
    if (!m_bHtmlFromSnippets)
        return;
    // Hidden widgets (most of a long feed) rebuild when they are shown again.
    if (isVisible())
        ResetHtml();
    else
        m_bThemeDirty = true;
}

void CLxRichText::FlushThemeChange() {
    if (m_bThemeDirty)
        ResetHtml();
}

void CLxRichText::SetMaxLine(int i32MaxLine) {
    m_i32MaxLine = i32MaxLine;
    LXUIKIT_ASSERT_RETURN(m_pLayout);
    m_pLayout->SetMaxLineCount(i32MaxLine);
    m_pLayout->Relayout();
    if (m_pMeasureLayout) {
        m_pMeasureLayout->SetMaxLineCount(i32MaxLine);
        m_pMeasureLayout->Relayout();
    }
    ContentChanged();
}

void CLxRichText::SetEllipsisShown(bool bShown) {
    m_bShowEllipsis = bShown;
    LXUIKIT_ASSERT_RETURN(m_pLayout);
    m_pLayout->SetShowEllipsis(bShown);
    m_pLayout->Relayout();
    if (m_pMeasureLayout) {
        m_pMeasureLayout->SetShowEllipsis(bShown);
        m_pMeasureLayout->Relayout();
    }
    ContentChanged();
}

void CLxRichText::SetTextMaxHeight(unsigned int u32MaxHeight) {
    m_u32TextMaxHeight = u32MaxHeight;
    LXUIKIT_ASSERT_RETURN(m_pLayout);
    ApplyLimits(m_pLayout);
    ApplyLimits(m_pMeasureLayout);
    ContentChanged();
}

void CLxRichText::ReSetMaxHeight() {
    if (m_i32MaxLine < 1)
        return;
    EnsureTextLayouted();
    const QRectF line = m_pLayout ? m_pLayout->GetLineRect(m_i32MaxLine - 1) : QRectF();
    if (line.isNull())
        return;
    const QMargins m = contentsMargins();
    const int frame = frameWidth();
    setMaximumHeight(qRound(line.bottom()) + m.top() + m.bottom() + 2 * frame);
}

void CLxRichText::SetWrapMode(WrapMode enMode) {
    if (m_enWrapMode == enMode)
        return;
    m_enWrapMode = enMode;
    AdjustWrapMode();
}

void CLxRichText::SetAlignment(TextAlignment enAlignment) {
    if (m_enAlignment == enAlignment)
        return;
    m_enAlignment = enAlignment;
    AdjustWrapMode();
}

void CLxRichText::AdjustWrapMode() {
    for (QTextDocument* pDoc : {m_pDoc.data(), m_pDocForCalculateSize.data()}) {
        if (!pDoc)
            continue;
        QTextOption option = pDoc->defaultTextOption();
        option.setWrapMode(ToQtWrap(m_enWrapMode));
        option.setAlignment(ToQtAlignment(m_enAlignment));
        pDoc->setDefaultTextOption(option);
    }
    ContentChanged();
}

void CLxRichText::SetSelectionColorKey(const QString& strKey) {
    m_strSelectionColorKey = strKey;
    update();
}

// ---- measuring --------------------------------------------------------------------------------

QPointF CLxRichText::DocumentOffset() const { return QPointF(contentsRect().topLeft()); }

int CLxRichText::CalculateDocumentContentWidth(int i32WidgetWidth) const {
    const QMargins m = contentsMargins();
    return qMax(0, i32WidgetWidth - m.left() - m.right() - 2 * frameWidth());
}

void CLxRichText::EnsureTextLayouted() {
    FlushThemeChange();
    if (!m_bTextLayoutDirty || !m_pDoc)
        return;
    const qreal width = m_enWrapMode == NoWrap ? -1 : qreal(contentsRect().width());
    if (m_pDoc->textWidth() != width)
        m_pDoc->setTextWidth(width);
    m_bTextLayoutDirty = false;
}

bool CLxRichText::EnsureMeasureDocument() {
    if (!InitDocumentForCalculateSize())
        return false;
    if (m_bMeasureDocDirty) {
        m_pDocForCalculateSize->setDefaultFont(font());
        SetHtmlInto(m_pDocForCalculateSize, m_strText);
        m_bMeasureDocDirty = false;
    }
    return true;
}

QTextDocument* CLxRichText::DocumentForWidth(qreal docWidth) {
    FlushThemeChange();
    // The shown document serves when it is at that width already, or when nothing has been
    // painted yet (the first paint lays it out at its real width anyway).
    if (m_pDoc && (m_pDoc->textWidth() == docWidth || !m_bPainted || !isVisible())) {
        if (m_pDoc->textWidth() != docWidth) {
            m_pDoc->setTextWidth(docWidth);
            m_bTextLayoutDirty = true;  // paint puts the real width back when it differs
        }
        return m_pDoc;
    }
    if (!EnsureMeasureDocument())
        return nullptr;
    if (m_pDocForCalculateSize->textWidth() != docWidth)
        m_pDocForCalculateSize->setTextWidth(docWidth);
    return m_pDocForCalculateSize;
}

QSize CLxRichText::DocumentSizeForWidth(int i32Width, bool bLimited) {
    const qreal docWidth = m_enWrapMode == NoWrap || i32Width < 0 ? -1 : CalculateDocumentContentWidth(i32Width);
    QTextDocument* pDoc = nullptr;
    if (bLimited) {
        pDoc = DocumentForWidth(docWidth);
    } else if (EnsureMeasureDocument()) {
        pDoc = m_pDocForCalculateSize;
        if (pDoc->textWidth() != docWidth)
            pDoc->setTextWidth(docWidth);
        m_pMeasureLayout->SetMaxLineCount(0);
        m_pMeasureLayout->SetMaxHeight(0);
        m_pMeasureLayout->Relayout();
        const QSizeF s = m_pMeasureLayout->documentSize();
        ApplyLimits(m_pMeasureLayout);
        return QSize(qCeil(s.width()), qCeil(s.height()));
    }
    if (!pDoc)
        return QSize();
    const QSizeF s = pDoc->documentLayout()->documentSize();
    return QSize(qCeil(s.width()), qCeil(s.height()));
}

QSize CLxRichText::SizeForWidth(int i32Width, bool bLimited) {
    LXUIKIT_ASSERT_RETURN(i32Width > 0, QSize());
    LXUIKIT_ASSERT_RETURN(InitDocumentForCalculateSize(), QSize());
    for (const auto& entry : m_sizeCache)
        if (entry.i32Width == i32Width && entry.bLimited == bLimited)
            return entry.size;
    const QSize doc = DocumentSizeForWidth(i32Width, bLimited);
    const QMargins m = contentsMargins();
    const int frame = 2 * frameWidth();
    const QSize size(doc.width() + m.left() + m.right() + frame, doc.height() + m.top() + m.bottom() + frame);
    SizeCacheEntry& slot = m_sizeCache[m_i32NextCacheSlot];
    m_i32NextCacheSlot = (m_i32NextCacheSlot + 1) % int(std::size(m_sizeCache));
    slot.i32Width = i32Width;
    slot.bLimited = bLimited;
    slot.size = size;
    return size;
}

bool CLxRichText::hasHeightForWidth() const { return m_enWrapMode != NoWrap; }

int CLxRichText::heightForWidth(int w) const {
    return const_cast<CLxRichText*>(this)->SizeForWidth(qMax(1, w), true).height();
}

int CLxRichText::GetDesiredWidth() {
    const QSize doc = DocumentSizeForWidth(-1, true);
    const QMargins m = contentsMargins();
    return doc.width() + m.left() + m.right() + 2 * frameWidth();
}

QSize CLxRichText::sizeHint() const {
    if (!m_bValidHints)
        (void)minimumSizeHint();
    return m_sizeHint;
}

// As Qt's label, a wrapped text is no wider than about 80 characters. The minimum is a few
// characters wide and one line high: the height comes from heightForWidth, and a taller minimum
// would leave room under a text that is cut at a narrower width.
QSize CLxRichText::minimumSizeHint() const {
    if (m_bValidHints)
        return m_minimumSizeHint;
    auto* self = const_cast<CLxRichText*>(this);
    const QMargins m = contentsMargins();
    const int extraW = m.left() + m.right() + 2 * frameWidth();
    const int extraH = m.top() + m.bottom() + 2 * frameWidth();
    int desired = 1;
    int firstLine = 0;
    if (QTextDocument* pDoc = self->DocumentForWidth(-1)) {
        auto* pLayout = qobject_cast<CLxRichTextLayout*>(pDoc->documentLayout());
        desired = qMax(1, qCeil(pDoc->documentLayout()->documentSize().width()) + extraW);
        const QRectF line = pLayout ? pLayout->GetLineRect(0) : QRectF();
        if (!line.isNull())
            firstLine = qCeil(line.bottom()) + extraH;
    }
    if (m_enWrapMode == NoWrap) {
        m_sizeHint = self->SizeForWidth(desired, true);
        m_minimumSizeHint = m_sizeHint;
    } else {
        const QFontMetrics fm(font());
        const int w = qMin(desired, fm.horizontalAdvance(QLatin1Char('x')) * 80 + extraW);
        m_sizeHint = QSize(w, self->SizeForWidth(w, true).height());
        m_minimumSizeHint =
            QSize(qMin(w, fm.horizontalAdvance(QLatin1Char('x')) * 4 + extraW), qMin(m_sizeHint.height(), firstLine));
    }
    m_bValidHints = true;
    return m_minimumSizeHint;
}

int CLxRichText::GetLineCount() {
    EnsureTextLayouted();
    return m_pLayout ? m_pLayout->GetLineCount() : 0;
}

int CLxRichText::GetLineCountForWidth(int i32Width, bool bLimited) {
    if (i32Width <= 0 || !EnsureMeasureDocument())
        return 0;
    const qreal docWidth = m_enWrapMode == NoWrap ? -1 : CalculateDocumentContentWidth(i32Width);
    if (m_pDocForCalculateSize->textWidth() != docWidth)
        m_pDocForCalculateSize->setTextWidth(docWidth);
    if (bLimited)
        return m_pMeasureLayout->GetLineCount();
    m_pMeasureLayout->SetMaxLineCount(0);
    m_pMeasureLayout->SetMaxHeight(0);
    m_pMeasureLayout->Relayout();
    const int n = m_pMeasureLayout->GetLineCount();
    ApplyLimits(m_pMeasureLayout);
    return n;
}

QTextLine CLxRichText::GetTextLine(int i32Index, QTextDocument* pDoc) {
    if (!pDoc || pDoc == m_pDoc)
        EnsureTextLayouted();
    auto* pLayout = qobject_cast<CLxRichTextLayout*>(pDoc ? pDoc->documentLayout() : m_pLayout.data());
    return pLayout ? pLayout->GetLine(i32Index) : QTextLine();
}

QTextLayout* CLxRichText::GetTextBlockLayout(QTextDocument* pDoc) {
    if (!pDoc || pDoc == m_pDoc)
        EnsureTextLayouted();
    QTextDocument* doc = pDoc ? pDoc : m_pDoc.data();
    if (!doc)
        return nullptr;
    doc->documentLayout()->documentSize();  // lays it out
    return doc->begin().layout();
}

int CLxRichText::FindLastVisibleLine() {
    EnsureTextLayouted();
    if (!m_pLayout)
        return -1;
    const qreal bottom = contentsRect().height();
    int last = -1;
    for (int i = 0;; ++i) {
        const QRectF line = m_pLayout->GetLineRect(i);
        if (line.isNull() || line.bottom() > bottom + 0.5)
            break;
        last = i;
    }
    return last;
}

QSize CLxRichText::GetContentSize() {
    EnsureTextLayouted();
    const QSizeF s = m_pLayout ? m_pLayout->documentSize() : QSizeF();
    return QSize(qCeil(s.width()), qCeil(s.height()));
}

QSize CLxRichText::GetContentRealSize() {
    EnsureTextLayouted();
    if (!m_pLayout)
        return QSize();
    const QSizeF s = m_pLayout->documentSize();
    return QSize(qCeil(qMin(s.width(), m_pLayout->GetIdealWidth())), qCeil(s.height()));
}

QSize CLxRichText::ContentRealSizeForWidth(int i32Width) {
    if (i32Width <= 0)
        return QSize();
    QTextDocument* pDoc =
        DocumentForWidth(m_enWrapMode == NoWrap ? -1 : qreal(CalculateDocumentContentWidth(i32Width)));
    auto* pLayout = pDoc ? qobject_cast<CLxRichTextLayout*>(pDoc->documentLayout()) : nullptr;
    if (!pLayout)
        return QSize();
    const QSizeF s = pLayout->documentSize();
    return QSize(qCeil(qMin(s.width(), pLayout->GetIdealWidth())), qCeil(s.height()));
}

// ---- selection --------------------------------------------------------------------------------

void CLxRichText::SetSelectEnable(bool bEnable) {
    m_bSelectEnable = bEnable;
    if (m_pControl) {
        m_pControl->setTextInteractionFlags(bEnable ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                    : Qt::NoTextInteraction);
        if (!bEnable)
            ClearSelection();
    }
    setFocusPolicy(bEnable ? Qt::ClickFocus : Qt::NoFocus);
}

void CLxRichText::SetSelection(int i32Start, int i32Length) {
    if (!m_pControl || !m_pDoc)
        return;
    const int last = m_pDoc->characterCount() - 1;
    QTextCursor c(m_pDoc);
    c.setPosition(qBound(0, i32Start, last));
    c.setPosition(qBound(0, i32Start + i32Length, last), QTextCursor::KeepAnchor);
    m_pControl->setTextCursor(c);
    update();
}

void CLxRichText::SelectAll() {
    if (m_pControl)
        m_pControl->selectAll();
    update();
}

void CLxRichText::ClearSelection() {
    if (!m_pControl)
        return;
    QTextCursor c = m_pControl->textCursor();
    c.clearSelection();
    m_pControl->setTextCursor(c);
    update();
}

bool CLxRichText::hasSelectedText() const { return m_pControl && m_pControl->textCursor().hasSelection(); }
int CLxRichText::selectionStart() const {
    return m_pControl && m_pControl->textCursor().hasSelection() ? m_pControl->textCursor().selectionStart() : -1;
}
int CLxRichText::selectionEnd() const {
    return m_pControl && m_pControl->textCursor().hasSelection() ? m_pControl->textCursor().selectionEnd() : -1;
}
bool CLxRichText::IsAllSelected() const {
    return hasSelectedText() && selectionStart() == 0 && selectionEnd() >= m_pDoc->characterCount() - 1;
}
QString CLxRichText::GetSelectedText() const {
    return m_pControl ? m_pControl->textCursor().selectedText() : QString();
}

// Anchored snippets are found by their href; plain text lies between them, as long as its shown
// text.
std::vector<std::pair<int, int>> CLxRichText::SnippetRanges() const {
    std::vector<std::pair<int, int>> ranges(m_vecSnippets.size(), {-1, -1});
    if (!m_pDoc)
        return ranges;
    for (QTextBlock b = m_pDoc->begin(); b.isValid(); b = b.next())
        for (auto it = b.begin(); !it.atEnd(); ++it) {
            const QTextFragment f = it.fragment();
            const QString href = f.charFormat().anchorHref();
            if (href.isEmpty())
                continue;
            bool ok = false;
            const int i = href.toInt(&ok, 10);
            if (!ok || i < 0 || i >= int(ranges.size()))
                continue;
            auto& r = ranges[size_t(i)];
            r.first = r.first < 0 ? f.position() : qMin(r.first, f.position());
            r.second = qMax(r.second, f.position() + f.length());
        }
    int pos = 0;
    for (size_t i = 0; i < ranges.size(); ++i) {
        if (ranges[i].first >= 0) {
            pos = ranges[i].second;
            continue;
        }
        if (!m_vecSnippets[i])
            continue;
        int limit = m_pDoc->characterCount() - 1;
        for (size_t j = i + 1; j < ranges.size(); ++j)
            if (ranges[j].first >= 0) {
                limit = ranges[j].first;
                break;
            }
        const int end = qMin(limit, pos + ShownLength(m_vecSnippets[i]->GetShownText()));
        ranges[i] = {pos, end};
        pos = end;
    }
    return ranges;
}

CLxRichText::SnippetList CLxRichText::GetSelDataItems() const {
    SnippetList out;
    if (!hasSelectedText())
        return out;
    const int start = selectionStart(), end = selectionEnd();
    const auto ranges = SnippetRanges();
    for (size_t i = 0; i < ranges.size(); ++i)
        if (m_vecSnippets[i] && ranges[i].first < end && ranges[i].second > start)
            out.push_back(m_vecSnippets[i]);
    return out;
}

// ---- pointer ------------------------------------------------------------------------------------

QString CLxRichText::GetHref(QMouseEvent* e) {
    if (!e || !m_pDoc)
        return QString();
    EnsureTextLayouted();
    return m_pDoc->documentLayout()->anchorAt(QPointF(e->pos()) - DocumentOffset());
}

std::shared_ptr<CLxRichTextSnippetBase> CLxRichText::SnippetForHref(const QString& strHref) const {
    if (strHref.isEmpty())
        return nullptr;
    bool ok = false;
    const int index = strHref.toInt(&ok, 10);
    if (!ok || index < 0 || index >= int(m_vecSnippets.size()))
        return nullptr;
    return m_vecSnippets[size_t(index)];
}

void CLxRichText::OnHovered(const QString& strHref) {
    const std::shared_ptr<CLxRichTextSnippetBase> snippet = SnippetForHref(strHref);
    if (snippet && snippet->GetRichTextType() != LxRichTextDataType_Emotion &&
        snippet->GetRichTextType() != LxRichTextDataType_Emoji)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    m_pLastHovered = snippet.get();
    emit Hovered(snippet, QCursor::pos());
}

void CLxRichText::OnClicked(const QString& strHref, QMouseEvent* e) {
    const std::shared_ptr<CLxRichTextSnippetBase> snippet = SnippetForHref(strHref);
    if (!snippet)
        return;
    QPointer<CLxRichText> self(this);
    emit Clicked(snippet, QCursor::pos());
    if (self && e)
        e->setAccepted(snippet->IsAcceptMousePress());
}

void CLxRichText::SendToControl(QEvent* e) {
    if (m_pControl)
        m_pControl->processEvent(e, -DocumentOffset(), this);
}

void CLxRichText::mousePressEvent(QMouseEvent* e) {
    EnsureTextLayouted();
    SendToControl(e);
    if (lx_std_ui::LWidgetUtil::isTouchEvent(e)) {
        m_bTouchPressed = true;
        m_ptTouchPress = e->globalPos();
        m_touchTimer.start();
        return;
    }
    OnClicked(GetHref(e), e);
}

void CLxRichText::mouseMoveEvent(QMouseEvent* e) {
    EnsureTextLayouted();
    SendToControl(e);
    OnHovered(GetHref(e));
}

void CLxRichText::mouseReleaseEvent(QMouseEvent* e) {
    SendToControl(e);
    if (!lx_std_ui::LWidgetUtil::isTouchEvent(e) || !m_bTouchPressed)
        return;
    m_bTouchPressed = false;
    // A tap: the finger hardly moved and did not stay long enough to be a long press.
    const bool bTap = (e->globalPos() - m_ptTouchPress).manhattanLength() < QApplication::startDragDistance() &&
                      m_touchTimer.elapsed() < QTapAndHoldGesture::timeout();
    if (bTap)
        OnClicked(GetHref(e), e);
}

void CLxRichText::mouseDoubleClickEvent(QMouseEvent* e) { SendToControl(e); }

void CLxRichText::leaveEvent(QEvent* e) {
    if (m_pLastHovered) {
        m_pLastHovered = nullptr;
        unsetCursor();
        emit Hovered(nullptr, QCursor::pos());
    }
    QFrame::leaveEvent(e);
}

void CLxRichText::contextMenuEvent(QContextMenuEvent* e) {
    if (!m_pControl || !m_bSelectEnable) {
        e->ignore();
        return;
    }
    QMenu* pMenu = m_pControl->createStandardContextMenu(QPointF(e->pos()) - DocumentOffset(), this);
    if (!pMenu) {
        e->ignore();
        return;
    }
    pMenu->setAttribute(Qt::WA_DeleteOnClose);
    pMenu->popup(e->globalPos());
}

void CLxRichText::keyPressEvent(QKeyEvent* e) {
    SendToControl(e);
    if (!e->isAccepted())
        QFrame::keyPressEvent(e);
}

void CLxRichText::focusInEvent(QFocusEvent* e) {
    SendToControl(e);
    QFrame::focusInEvent(e);
}

void CLxRichText::focusOutEvent(QFocusEvent* e) {
    SendToControl(e);
    QFrame::focusOutEvent(e);
}

bool CLxRichText::focusNextPrevChild(bool bNext) {
    if (m_pControl && m_pControl->setFocusToNextOrPreviousAnchor(bNext))
        return true;
    return QFrame::focusNextPrevChild(bNext);
}

// ---- events -----------------------------------------------------------------------------------

bool CLxRichText::event(QEvent* e) {
    switch (e->type()) {
    case QEvent::Polish: EnsureTextControl(); break;
    case QEvent::StyleChange: {
        // The style decides how far a label's visible part lies inside the rectangle a layout
        // gives it. Set after the frame has handled the change: the frame sets its own (frame)
        // margins then, which would otherwise win.
        const bool bResult = QFrame::event(e);
        QWidgetPrivate::get(this)->setLayoutItemMargins(QStyle::SE_LabelLayoutItem);
        InvalidateSizes();
        updateGeometry();
        return bResult;
    }
    case QEvent::Resize:
        if (m_pControl)
            m_bTextLayoutDirty = true;
        break;
    case QEvent::ShortcutOverride:
        if (m_pControl && m_bSelectEnable) {
            SendToControl(e);
            if (e->isAccepted())
                return true;
        }
        break;
    default: break;
    }
    return QFrame::event(e);
}

void CLxRichText::changeEvent(QEvent* e) {
    switch (e->type()) {
    case QEvent::FontChange:
    case QEvent::ApplicationFontChange:
        if (m_pDoc)
            m_pDoc->setDefaultFont(font());
        m_bMeasureDocDirty = true;
        ContentChanged();
        break;
    case QEvent::PaletteChange:
        if (m_pControl)
            m_pControl->setPalette(palette());
        break;
    case QEvent::ContentsRectChange: ContentChanged(); break;
    default: break;
    }
    QFrame::changeEvent(e);
}

void CLxRichText::resizeEvent(QResizeEvent* e) {
    m_bSizeChanged = e->size() != e->oldSize();
    if (m_bSizeChanged)
        m_bTextLayoutDirty = true;
    QFrame::resizeEvent(e);
}

void CLxRichText::showEvent(QShowEvent* e) {
    FlushThemeChange();
    QFrame::showEvent(e);
}

void CLxRichText::paintEvent(QPaintEvent* e) {
    QPainter painter(this);
    drawFrame(&painter);
    EnsureTextLayouted();
    m_bPainted = true;
    if (!m_pControl || !m_pLayout)
        return;
    const QRect cr = contentsRect();
    painter.translate(cr.topLeft());
    painter.setClipRect(QRect(QPoint(0, 0), cr.size()));
    QAbstractTextDocumentLayout::PaintContext ctx = m_pControl->getPaintContext(this);
    ctx.cursorPosition = -1;  // a label shows no caret
    lx_ui_res::Provider* pRes = lx_ui_res::Provider::instance();
    const QColor selection = pRes->color(m_strSelectionColorKey);
    for (auto& sel : ctx.selections) {
        if (selection.isValid())
            sel.format.setBackground(selection);
        sel.format.clearForeground();  // the text keeps its own colours under the selection
    }
    if (m_spConfig) {
        const QColor text = pRes->color(m_spConfig->strTextColor);
        if (text.isValid())
            ctx.palette.setColor(QPalette::Text, text);
    }
    ctx.clip = QRectF(e->rect().translated(-cr.topLeft()));
    m_pLayout->draw(&painter, ctx);
}
