#include <LxUIKit/RichText/LxRichText.h>

#include <LxStdUI/LWidgetUtil.h>
#include <LxStdUI/ResProvider.h>
#include <LxUIKit/LxTextObjectHandler/LxEmotionObjectHandler.h>
#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/RichText/ILxRichTextData.h>
#include <LxUIKit/RichText/LxRichTextDocumentBuilder_p.h>
#include <LxUIKit/RichText/LxRichTextDocument_p.h>
#include <LxUIKit/RichText/LxRichTextLayout.h>
#include <LxUIKit/RichText/LxRichTextSnippetEmoticon.h>
#include <LxUIKit/RichText/LxRichText_p.h>

#include <QtWidgets/private/qwidget_p.h>
#include <QApplication>
#include <QContextMenuEvent>
#include <QGesture>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextLayout>
#include <QtMath>

#include <cmath>

static_assert(CLxRichText::kEmotionObjectType == QTextFormat::UserObject + 4, "emoticon object type");

namespace {

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

CLxRichText::CLxRichText(QWidget* pParent) : QFrame(pParent), m_pPrivate(std::make_unique<CLxRichTextPrivate>()) {
    init();
}

CLxRichText::~CLxRichText() {
    // The documents go first, while the bookkeeping their last signals reach is still there.
    delete m_pPrivate->pControl.data();
    delete m_pPrivate->pDoc.data();
    delete m_pPrivate->pDocForCalculateSize.data();
}

// Cheap on purpose: a feed makes many rows it never paints. The document, its layout, the text
// control and the measuring document are made when something first needs them.
void CLxRichText::init() {
    static const int s_i32MetaType = qRegisterMetaType<std::shared_ptr<CLxRichTextSnippetBase>>();
    Q_UNUSED(s_i32MetaType);
    m_pPrivate->spConfig = std::make_shared<LxRichTextConfig>();

    setSizePolicy(QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred, QSizePolicy::Label));
    setMouseTracking(true);  // hovers are reported without a button pressed
    setFocusPolicy(Qt::ClickFocus);
    LXUIKIT_SAFE_CONNECT(lx_ui_theme::Manager::instancePtr(), &lx_ui_theme::Manager::themeChanged, this,
                         &CLxRichText::OnThemeChanged);
}

const CLxRichText::SnippetList& CLxRichText::GetRichTextData() const { return m_pPrivate->vecSnippets; }
std::shared_ptr<LxRichTextConfig> CLxRichText::GetConfig() const { return m_pPrivate->spConfig; }
int CLxRichText::GetMaxLine() const { return m_pPrivate->i32MaxLine; }
CLxRichText::WrapMode CLxRichText::GetWrapMode() const { return m_pPrivate->enWrapMode; }
CLxRichText::TextAlignment CLxRichText::GetAlignment() const { return m_pPrivate->enAlignment; }
bool CLxRichText::IsSelectEnable() const { return m_pPrivate->bSelectEnable; }

CLxRichTextLayout* CLxRichText::GetLayout() const {
    const_cast<CLxRichText*>(this)->EnsureDocument();
    return m_pPrivate->pLayout;
}

// The shown document and its layout, with the emoticon handler.
QTextDocument* CLxRichText::EnsureDocument() {
    CLxRichTextPrivate* d = m_pPrivate.get();
    if (!d->pDoc) {
        auto* pDoc = new CLxRichTextDocument(this);
        auto* pLayout = new CLxRichTextLayout(pDoc);
        SetupDocument(pDoc, pLayout);
        d->pDoc = pDoc;
        d->pLayout = pLayout;
        d->bTextLayoutDirty = true;
        // Until a text control listens, the widget repaints on the layout's own requests.
        LXUIKIT_SAFE_CONNECT(pLayout, &QAbstractTextDocumentLayout::update, this, [this] { update(); });
        SetHtmlInto(pDoc, d->strText, d->bHtmlFromSnippets);
    }
    return d->pDoc;
}

// The text control over the shown document, as Qt's label has; made for the first selection,
// pointer, key or focus event.
CLxRichTextControl* CLxRichText::EnsureTextControl() {
    CLxRichTextPrivate* d = m_pPrivate.get();
    if (d->pControl)
        return d->pControl;
    QTextDocument* pDoc = EnsureDocument();
    QPointer<CLxRichText> self(this);
    auto* pControl = new CLxRichTextControl(pDoc, this, [self](const QString& href) {
        auto snippet = self ? self->SnippetForHref(href) : nullptr;
        ILxRichTextData* pData = snippet ? snippet->GetData() : nullptr;
        return pData ? pData->ToPlainText() : QString();
    });
    pDoc->setParent(pControl);
    d->pControl = pControl;
    pControl->setTextInteractionFlags(d->bSelectEnable ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                       : Qt::NoTextInteraction);
    pControl->setPalette(palette());
    pControl->setFocus(hasFocus());
    LXUIKIT_SAFE_CONNECT(pControl, &QWidgetTextControl::updateRequest, this, [this] { update(); });
    d->bTextLayoutDirty = true;
    return pControl;
}

bool CLxRichText::InitDocumentForCalculateSize() {
    CLxRichTextPrivate* d = m_pPrivate.get();
    if (d->pDocForCalculateSize)
        return true;
    auto* pDoc = new CLxRichTextDocument(this);
    auto* pLayout = new CLxRichTextLayout(pDoc);
    SetupDocument(pDoc, pLayout);
    d->pDocForCalculateSize = pDoc;
    d->pMeasureLayout = pLayout;
    d->bMeasureDocDirty = true;
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
    option.setWrapMode(ToQtWrap(m_pPrivate->enWrapMode));
    option.setAlignment(ToQtAlignment(m_pPrivate->enAlignment));
    pDoc->setDefaultTextOption(option);
    ApplyLimits(pLayout);
}

void CLxRichText::ApplyLimits(CLxRichTextLayout* pLayout) {
    if (!pLayout)
        return;
    pLayout->SetMaxLineCount(m_pPrivate->i32MaxLine);
    pLayout->SetShowEllipsis(m_pPrivate->bShowEllipsis);
    pLayout->SetMaxHeight(m_pPrivate->u32TextMaxHeight);
    if (m_pPrivate->spConfig)
        pLayout->SetEllipsisTextColor(m_pPrivate->spConfig->strTextColor);
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

// The shown HTML into a document: from the prepared pieces when it was built from snippets of
// known shapes, else through Qt's HTML reader.
void CLxRichText::SetHtmlInto(QTextDocument* pDoc, const QString& strHtml, bool bFromSnippets) {
    if (!pDoc)
        return;
    if (bFromSnippets && m_pPrivate->bPiecesValid) {
        CLxRichTextDocumentBuilder::Fill(pDoc, m_pPrivate->vecPieces);
        return;
    }
    if (strHtml.isEmpty())
        pDoc->clear();
    else
        pDoc->setHtml(strHtml);
    SetEmotionObjectType(pDoc);
}

QString CLxRichText::GetFormatHtml() { return BuildSnippetHtml() ? JoinSnippetHtml() : QString(); }

bool CLxRichText::BuildSnippetHtml() {
    if (m_pPrivate->vecSnippets.empty() || !m_pPrivate->spConfig)
        return false;
    for (size_t i = 0; i < m_pPrivate->vecSnippets.size(); ++i) {
        if (const auto& snippet = m_pPrivate->vecSnippets[i])
            snippet->CreatHtml(unsigned(i), m_pPrivate->spConfig);
    }
    return true;
}

QString CLxRichText::JoinSnippetHtml() const {
    QString html;
    for (const auto& snippet : m_pPrivate->vecSnippets) {
        if (snippet)
            html += snippet->GetHtml();
    }
    return html;
}

// The snippets' markup is built (the pieces are read from it), but joined into one HTML text only
// when text() asks: a document filled from pieces never needs it.
void CLxRichText::SetContentFromSnippets() {
    CLxRichTextPrivate* d = m_pPrivate.get();
    const bool bBuilt = BuildSnippetHtml();
    if (bBuilt && CLxRichTextDocumentBuilder::Prepare(d->vecSnippets, d->vecPieces)) {
        ApplyContent(QString(), true, true);
        d->bTextStale = true;
    } else {
        ApplyContent(bBuilt ? JoinSnippetHtml() : QString(), true, false);
    }
}

void CLxRichText::SetRichTextData(const SnippetList& vecSnippets) {
    m_pPrivate->vecSnippets = vecSnippets;
    m_pPrivate->pLastHovered = nullptr;
    SetContentFromSnippets();
}

void CLxRichText::SetConfig(std::shared_ptr<LxRichTextConfig> spConfig) {
    m_pPrivate->spConfig = std::move(spConfig);
    if (m_pPrivate->spConfig) {
        if (m_pPrivate->pLayout)
            m_pPrivate->pLayout->SetEllipsisTextColor(m_pPrivate->spConfig->strTextColor);
        if (m_pPrivate->pMeasureLayout)
            m_pPrivate->pMeasureLayout->SetEllipsisTextColor(m_pPrivate->spConfig->strTextColor);
    }
    SetContentFromSnippets();
}

void CLxRichText::ResetHtml() {
    m_pPrivate->bThemeDirty = false;
    SetContentFromSnippets();
}

QString CLxRichText::text() const {
    const_cast<CLxRichText*>(this)->FlushThemeChange();
    CLxRichTextPrivate* d = m_pPrivate.get();
    if (d->bTextStale) {
        d->strText = JoinSnippetHtml();
        d->bTextStale = false;
    }
    return d->strText;
}

void CLxRichText::setText(const QString& strHtml) { ApplyContent(strHtml, false, false); }

void CLxRichText::ApplyContent(const QString& strHtml, bool bFromSnippets, bool bPiecesValid) {
    CLxRichTextPrivate* d = m_pPrivate.get();
    d->strText = strHtml;
    d->bTextStale = false;
    d->bHtmlFromSnippets = bFromSnippets;
    d->bPiecesValid = bPiecesValid;
    if (!d->bPiecesValid)
        d->vecPieces.clear();
    // Setting the control's cursor makes it lay the document out for the caret: only when needed.
    if (d->pControl && d->pControl->textCursor().hasSelection()) {
        QTextCursor c = d->pControl->textCursor();
        c.clearSelection();
        d->pControl->setTextCursor(c);
    }
    // The shown document is filled now only when it exists; otherwise whoever first needs it
    // (measuring, painting, a click) makes and fills it.
    if (d->pDoc)
        SetHtmlInto(d->pDoc, strHtml, bFromSnippets);
    d->bMeasureDocDirty = true;
    ContentChanged();
}

void CLxRichText::Clear() {
    m_pPrivate->vecSnippets.clear();
    m_pPrivate->pLastHovered = nullptr;
    setText(QString());
}

void CLxRichText::clearContents() { Clear(); }

QString CLxRichText::textWithEmotionID() const {
    QString out;
    for (const auto& snippet : m_pPrivate->vecSnippets) {
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
    auto* self = const_cast<CLxRichText*>(this);
    self->FlushThemeChange();
    return self->EnsureDocument();
}

void CLxRichText::ContentChanged() {
    m_pPrivate->bTextLayoutDirty = true;
    InvalidateSizes();
    updateGeometry();
    update();
}

void CLxRichText::InvalidateSizes() {
    m_pPrivate->bValidHints = false;
    for (auto& entry : m_pPrivate->sizeCache)
        entry.i32Width = -1;
}

void CLxRichText::OnThemeChanged(lx_ui_theme::Manager::Theme) {
    // HTML given through setText carries its own colours: there is nothing to build again.
    if (!m_pPrivate->bHtmlFromSnippets)
        return;
    // Hidden widgets (most of a long feed) rebuild when they are shown again.
    if (isVisible())
        ResetHtml();
    else
        m_pPrivate->bThemeDirty = true;
}

void CLxRichText::FlushThemeChange() {
    if (m_pPrivate->bThemeDirty)
        ResetHtml();
}

void CLxRichText::SetMaxLine(int i32MaxLine) {
    m_pPrivate->i32MaxLine = i32MaxLine;
    ReapplyLimits();
}

void CLxRichText::SetEllipsisShown(bool bShown) {
    m_pPrivate->bShowEllipsis = bShown;
    ReapplyLimits();
}

void CLxRichText::SetTextMaxHeight(unsigned int u32MaxHeight) {
    m_pPrivate->u32TextMaxHeight = u32MaxHeight;
    ReapplyLimits();
}

void CLxRichText::ReapplyLimits() {
    if (m_pPrivate->pDoc && !LXUIKIT_ASSERT_TEXT(m_pPrivate->pLayout, "m_pLayout"))
        return;
    ApplyLimits(m_pPrivate->pLayout);
    ApplyLimits(m_pPrivate->pMeasureLayout);
    ContentChanged();
}

void CLxRichText::ReSetMaxHeight() {
    if (m_pPrivate->i32MaxLine < 1)
        return;
    EnsureTextLayouted();
    const QRectF line = m_pPrivate->pLayout ? m_pPrivate->pLayout->GetLineRect(m_pPrivate->i32MaxLine - 1) : QRectF();
    if (line.isNull())
        return;
    const QMargins m = contentsMargins();
    const int frame = frameWidth();
    setMaximumHeight(qRound(line.bottom()) + m.top() + m.bottom() + 2 * frame);
}

void CLxRichText::SetWrapMode(WrapMode enMode) {
    if (m_pPrivate->enWrapMode == enMode)
        return;
    m_pPrivate->enWrapMode = enMode;
    AdjustWrapMode();
}

void CLxRichText::SetAlignment(TextAlignment enAlignment) {
    if (m_pPrivate->enAlignment == enAlignment)
        return;
    m_pPrivate->enAlignment = enAlignment;
    AdjustWrapMode();
}

void CLxRichText::AdjustWrapMode() {
    for (QTextDocument* pDoc : {m_pPrivate->pDoc.data(), m_pPrivate->pDocForCalculateSize.data()}) {
        if (!pDoc)
            continue;
        QTextOption option = pDoc->defaultTextOption();
        option.setWrapMode(ToQtWrap(m_pPrivate->enWrapMode));
        option.setAlignment(ToQtAlignment(m_pPrivate->enAlignment));
        pDoc->setDefaultTextOption(option);
    }
    ContentChanged();
}

void CLxRichText::SetSelectionColorKey(const QString& strKey) {
    m_pPrivate->strSelectionColorKey = strKey;
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
    if (!EnsureDocument() || !m_pPrivate->bTextLayoutDirty)
        return;
    const qreal width = m_pPrivate->enWrapMode == NoWrap ? -1 : qreal(contentsRect().width());
    if (m_pPrivate->pDoc->textWidth() != width)
        m_pPrivate->pDoc->setTextWidth(width);
    m_pPrivate->bTextLayoutDirty = false;
}

bool CLxRichText::EnsureMeasureDocument() {
    if (!LXUIKIT_ASSERT(InitDocumentForCalculateSize()))
        return false;
    if (m_pPrivate->bMeasureDocDirty) {
        m_pPrivate->pDocForCalculateSize->setDefaultFont(font());
        SetHtmlInto(m_pPrivate->pDocForCalculateSize, m_pPrivate->strText, m_pPrivate->bHtmlFromSnippets);
        m_pPrivate->bMeasureDocDirty = false;
    }
    return true;
}

QTextDocument* CLxRichText::DocumentForWidth(qreal docWidth) {
    FlushThemeChange();
    EnsureDocument();
    // The shown document serves when it is at that width already, or when nothing has been
    // painted yet (the first paint lays it out at its real width anyway).
    if (m_pPrivate->pDoc && (m_pPrivate->pDoc->textWidth() == docWidth || !m_pPrivate->bPainted || !isVisible())) {
        if (m_pPrivate->pDoc->textWidth() != docWidth) {
            m_pPrivate->pDoc->setTextWidth(docWidth);
            m_pPrivate->bTextLayoutDirty = true;  // paint puts the real width back when it differs
        }
        return m_pPrivate->pDoc;
    }
    if (!EnsureMeasureDocument())
        return nullptr;
    if (m_pPrivate->pDocForCalculateSize->textWidth() != docWidth)
        m_pPrivate->pDocForCalculateSize->setTextWidth(docWidth);
    return m_pPrivate->pDocForCalculateSize;
}

QSize CLxRichText::DocumentSizeForWidth(int i32Width, bool bLimited) {
    const qreal docWidth =
        m_pPrivate->enWrapMode == NoWrap || i32Width < 0 ? -1 : CalculateDocumentContentWidth(i32Width);
    QTextDocument* pDoc = nullptr;
    if (bLimited) {
        pDoc = DocumentForWidth(docWidth);
    } else if (EnsureMeasureDocument()) {
        pDoc = m_pPrivate->pDocForCalculateSize;
        if (pDoc->textWidth() != docWidth)
            pDoc->setTextWidth(docWidth);
        m_pPrivate->pMeasureLayout->SetMaxLineCount(0);
        m_pPrivate->pMeasureLayout->SetMaxHeight(0);
        m_pPrivate->pMeasureLayout->Relayout();
        const QSizeF s = m_pPrivate->pMeasureLayout->documentSize();
        ApplyLimits(m_pPrivate->pMeasureLayout);
        return QSize(qCeil(s.width()), qCeil(s.height()));
    }
    if (!pDoc)
        return QSize();
    const QSizeF s = pDoc->documentLayout()->documentSize();
    return QSize(qCeil(s.width()), qCeil(s.height()));
}

QSize CLxRichText::SizeForWidth(int i32Width, bool bLimited) {
    LXUIKIT_ASSERT_RETURN(i32Width > 0, QSize());
    for (const auto& entry : m_pPrivate->sizeCache)
        if (entry.i32Width == i32Width && entry.bLimited == bLimited)
            return entry.size;
    const QSize doc = DocumentSizeForWidth(i32Width, bLimited);
    const QMargins m = contentsMargins();
    const int frame = 2 * frameWidth();
    const QSize size(doc.width() + m.left() + m.right() + frame, doc.height() + m.top() + m.bottom() + frame);
    CLxRichTextPrivate::SizeCacheEntry& slot = m_pPrivate->sizeCache[m_pPrivate->i32NextCacheSlot];
    m_pPrivate->i32NextCacheSlot = (m_pPrivate->i32NextCacheSlot + 1) % int(std::size(m_pPrivate->sizeCache));
    slot.i32Width = i32Width;
    slot.bLimited = bLimited;
    slot.size = size;
    return size;
}

bool CLxRichText::hasHeightForWidth() const { return m_pPrivate->enWrapMode != NoWrap; }

int CLxRichText::heightForWidth(int w) const {
    return const_cast<CLxRichText*>(this)->SizeForWidth(qMax(1, w), true).height();
}

int CLxRichText::GetDesiredWidth() {
    const QSize doc = DocumentSizeForWidth(-1, true);
    const QMargins m = contentsMargins();
    return doc.width() + m.left() + m.right() + 2 * frameWidth();
}

QSize CLxRichText::sizeHint() const {
    if (!m_pPrivate->bValidHints)
        (void)minimumSizeHint();
    return m_pPrivate->sizeHint;
}

// As Qt's label, a wrapped text is no wider than about 80 characters. The minimum is a few
// characters wide and one line high: the height comes from heightForWidth, and a taller minimum
// would leave room under a text that is cut at a narrower width.
QSize CLxRichText::minimumSizeHint() const {
    if (m_pPrivate->bValidHints)
        return m_pPrivate->minimumSizeHint;
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
    if (m_pPrivate->enWrapMode == NoWrap) {
        m_pPrivate->sizeHint = self->SizeForWidth(desired, true);
        m_pPrivate->minimumSizeHint = m_pPrivate->sizeHint;
    } else {
        const QFontMetrics fm(font());
        const int w = qMin(desired, fm.horizontalAdvance(QLatin1Char('x')) * 80 + extraW);
        m_pPrivate->sizeHint = QSize(w, self->SizeForWidth(w, true).height());
        m_pPrivate->minimumSizeHint = QSize(qMin(w, fm.horizontalAdvance(QLatin1Char('x')) * 4 + extraW),
                                            qMin(m_pPrivate->sizeHint.height(), firstLine));
    }
    m_pPrivate->bValidHints = true;
    return m_pPrivate->minimumSizeHint;
}

int CLxRichText::GetLineCount() {
    EnsureTextLayouted();
    return m_pPrivate->pLayout ? m_pPrivate->pLayout->GetLineCount() : 0;
}

int CLxRichText::GetLineCountForWidth(int i32Width, bool bLimited) {
    if (i32Width <= 0 || !EnsureMeasureDocument())
        return 0;
    const qreal docWidth = m_pPrivate->enWrapMode == NoWrap ? -1 : CalculateDocumentContentWidth(i32Width);
    if (m_pPrivate->pDocForCalculateSize->textWidth() != docWidth)
        m_pPrivate->pDocForCalculateSize->setTextWidth(docWidth);
    if (bLimited)
        return m_pPrivate->pMeasureLayout->GetLineCount();
    m_pPrivate->pMeasureLayout->SetMaxLineCount(0);
    m_pPrivate->pMeasureLayout->SetMaxHeight(0);
    m_pPrivate->pMeasureLayout->Relayout();
    const int n = m_pPrivate->pMeasureLayout->GetLineCount();
    ApplyLimits(m_pPrivate->pMeasureLayout);
    return n;
}

QTextLine CLxRichText::GetTextLine(int i32Index, QTextDocument* pDoc) {
    if (!pDoc || pDoc == m_pPrivate->pDoc)
        EnsureTextLayouted();
    auto* pLayout = qobject_cast<CLxRichTextLayout*>(pDoc ? pDoc->documentLayout() : m_pPrivate->pLayout.data());
    return pLayout ? pLayout->GetLine(i32Index) : QTextLine();
}

QTextLayout* CLxRichText::GetTextBlockLayout(QTextDocument* pDoc) {
    if (!pDoc || pDoc == m_pPrivate->pDoc)
        EnsureTextLayouted();
    QTextDocument* doc = pDoc ? pDoc : m_pPrivate->pDoc.data();
    if (!doc)
        return nullptr;
    doc->documentLayout()->documentSize();  // lays it out
    return doc->begin().layout();
}

int CLxRichText::FindLastVisibleLine() {
    EnsureTextLayouted();
    if (!m_pPrivate->pLayout)
        return -1;
    const qreal bottom = contentsRect().height();
    int last = -1;
    for (int i = 0;; ++i) {
        const QRectF line = m_pPrivate->pLayout->GetLineRect(i);
        if (line.isNull() || line.bottom() > bottom + 0.5)
            break;
        last = i;
    }
    return last;
}

QSize CLxRichText::GetContentSize() {
    EnsureTextLayouted();
    const QSizeF s = m_pPrivate->pLayout ? m_pPrivate->pLayout->documentSize() : QSizeF();
    return QSize(qCeil(s.width()), qCeil(s.height()));
}

QSize CLxRichText::GetContentRealSize() {
    EnsureTextLayouted();
    if (!m_pPrivate->pLayout)
        return QSize();
    const QSizeF s = m_pPrivate->pLayout->documentSize();
    return QSize(qCeil(qMin(s.width(), m_pPrivate->pLayout->GetIdealWidth())), qCeil(s.height()));
}

QSize CLxRichText::ContentRealSizeForWidth(int i32Width) {
    if (i32Width <= 0)
        return QSize();
    QTextDocument* pDoc =
        DocumentForWidth(m_pPrivate->enWrapMode == NoWrap ? -1 : qreal(CalculateDocumentContentWidth(i32Width)));
    auto* pLayout = pDoc ? qobject_cast<CLxRichTextLayout*>(pDoc->documentLayout()) : nullptr;
    if (!pLayout)
        return QSize();
    const QSizeF s = pLayout->documentSize();
    return QSize(qCeil(qMin(s.width(), pLayout->GetIdealWidth())), qCeil(s.height()));
}

// ---- selection --------------------------------------------------------------------------------

void CLxRichText::SetSelectEnable(bool bEnable) {
    m_pPrivate->bSelectEnable = bEnable;
    if (m_pPrivate->pControl) {
        m_pPrivate->pControl->setTextInteractionFlags(bEnable ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                              : Qt::NoTextInteraction);
        if (!bEnable)
            ClearSelection();
    }
    setFocusPolicy(bEnable ? Qt::ClickFocus : Qt::NoFocus);
}

void CLxRichText::SetSelection(int i32Start, int i32Length) {
    QWidgetTextControl* pControl = EnsureTextControl();
    const int last = m_pPrivate->pDoc->characterCount() - 1;
    QTextCursor c(m_pPrivate->pDoc);
    c.setPosition(qBound(0, i32Start, last));
    c.setPosition(qBound(0, i32Start + i32Length, last), QTextCursor::KeepAnchor);
    pControl->setTextCursor(c);
    update();
}

void CLxRichText::SelectAll() {
    EnsureTextControl()->selectAll();
    update();
}

void CLxRichText::ClearSelection() {
    if (!m_pPrivate->pControl)
        return;
    QTextCursor c = m_pPrivate->pControl->textCursor();
    c.clearSelection();
    m_pPrivate->pControl->setTextCursor(c);
    update();
}

bool CLxRichText::hasSelectedText() const {
    return m_pPrivate->pControl && m_pPrivate->pControl->textCursor().hasSelection();
}
int CLxRichText::selectionStart() const {
    return m_pPrivate->pControl && m_pPrivate->pControl->textCursor().hasSelection()
               ? m_pPrivate->pControl->textCursor().selectionStart()
               : -1;
}
int CLxRichText::selectionEnd() const {
    return m_pPrivate->pControl && m_pPrivate->pControl->textCursor().hasSelection()
               ? m_pPrivate->pControl->textCursor().selectionEnd()
               : -1;
}
bool CLxRichText::IsAllSelected() const {
    return hasSelectedText() && selectionStart() == 0 && selectionEnd() >= m_pPrivate->pDoc->characterCount() - 1;
}
QString CLxRichText::GetSelectedText() const {
    return m_pPrivate->pControl ? m_pPrivate->pControl->textCursor().selectedText() : QString();
}

// Anchored snippets are found by their href; plain text lies between them, as long as its shown
// text.
std::vector<std::pair<int, int>> CLxRichText::SnippetRanges() const {
    std::vector<std::pair<int, int>> ranges(m_pPrivate->vecSnippets.size(), {-1, -1});
    if (!m_pPrivate->pDoc)
        return ranges;
    for (QTextBlock b = m_pPrivate->pDoc->begin(); b.isValid(); b = b.next())
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
        if (!m_pPrivate->vecSnippets[i])
            continue;
        int limit = m_pPrivate->pDoc->characterCount() - 1;
        for (size_t j = i + 1; j < ranges.size(); ++j)
            if (ranges[j].first >= 0) {
                limit = ranges[j].first;
                break;
            }
        const int end = qMin(limit, pos + ShownLength(m_pPrivate->vecSnippets[i]->GetShownText()));
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
        if (m_pPrivate->vecSnippets[i] && ranges[i].first < end && ranges[i].second > start)
            out.push_back(m_pPrivate->vecSnippets[i]);
    return out;
}

// ---- pointer ------------------------------------------------------------------------------------

QString CLxRichText::GetHref(QMouseEvent* e) {
    if (!e)
        return QString();
    EnsureTextLayouted();
    return m_pPrivate->pDoc->documentLayout()->anchorAt(QPointF(e->pos()) - DocumentOffset());
}

std::shared_ptr<CLxRichTextSnippetBase> CLxRichText::SnippetForHref(const QString& strHref) const {
    if (strHref.isEmpty())
        return nullptr;
    bool ok = false;
    const int index = strHref.toInt(&ok, 10);
    if (!ok || index < 0 || index >= int(m_pPrivate->vecSnippets.size()))
        return nullptr;
    return m_pPrivate->vecSnippets[size_t(index)];
}

void CLxRichText::OnHovered(const QString& strHref) {
    const std::shared_ptr<CLxRichTextSnippetBase> snippet = SnippetForHref(strHref);
    if (snippet && snippet->GetRichTextType() != LxRichTextDataType_Emotion &&
        snippet->GetRichTextType() != LxRichTextDataType_Emoji)
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    m_pPrivate->pLastHovered = snippet.get();
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

// Presses, keys and focus make the text control; a move or a focus loss before it exists has
// nothing to select or to end.
void CLxRichText::SendToControl(QEvent* e, bool bCreate) {
    if (QWidgetTextControl* pControl = bCreate ? EnsureTextControl() : m_pPrivate->pControl.data())
        pControl->processEvent(e, -DocumentOffset(), this);
}

void CLxRichText::mousePressEvent(QMouseEvent* e) {
    EnsureTextLayouted();
    SendToControl(e);
    if (lx_std_ui::LWidgetUtil::isTouchEvent(e)) {
        m_pPrivate->bTouchPressed = true;
        m_pPrivate->ptTouchPress = e->globalPos();
        m_pPrivate->touchTimer.start();
        return;
    }
    OnClicked(GetHref(e), e);
}

void CLxRichText::mouseMoveEvent(QMouseEvent* e) {
    EnsureTextLayouted();
    SendToControl(e, false);
    OnHovered(GetHref(e));
}

void CLxRichText::mouseReleaseEvent(QMouseEvent* e) {
    SendToControl(e);
    if (!lx_std_ui::LWidgetUtil::isTouchEvent(e) || !m_pPrivate->bTouchPressed)
        return;
    m_pPrivate->bTouchPressed = false;
    // A tap: the finger hardly moved and did not stay long enough to be a long press.
    const bool bTap =
        (e->globalPos() - m_pPrivate->ptTouchPress).manhattanLength() < QApplication::startDragDistance() &&
        m_pPrivate->touchTimer.elapsed() < QTapAndHoldGesture::timeout();
    if (bTap)
        OnClicked(GetHref(e), e);
}

void CLxRichText::mouseDoubleClickEvent(QMouseEvent* e) { SendToControl(e); }

void CLxRichText::leaveEvent(QEvent* e) {
    if (m_pPrivate->pLastHovered) {
        m_pPrivate->pLastHovered = nullptr;
        unsetCursor();
        emit Hovered(nullptr, QCursor::pos());
    }
    QFrame::leaveEvent(e);
}

void CLxRichText::contextMenuEvent(QContextMenuEvent* e) {
    if (!m_pPrivate->bSelectEnable) {
        e->ignore();
        return;
    }
    QMenu* pMenu = EnsureTextControl()->createStandardContextMenu(QPointF(e->pos()) - DocumentOffset(), this);
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
    SendToControl(e, false);
    QFrame::focusOutEvent(e);
}

bool CLxRichText::focusNextPrevChild(bool bNext) {
    if (EnsureTextControl()->setFocusToNextOrPreviousAnchor(bNext))
        return true;
    return QFrame::focusNextPrevChild(bNext);
}

// ---- events -----------------------------------------------------------------------------------

bool CLxRichText::event(QEvent* e) {
    switch (e->type()) {
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
    case QEvent::Resize: m_pPrivate->bTextLayoutDirty = true; break;
    case QEvent::ShortcutOverride:
        if (m_pPrivate->pControl && m_pPrivate->bSelectEnable) {
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
        if (m_pPrivate->pDoc)
            m_pPrivate->pDoc->setDefaultFont(font());
        m_pPrivate->bMeasureDocDirty = true;
        ContentChanged();
        break;
    case QEvent::PaletteChange:
        if (m_pPrivate->pControl)
            m_pPrivate->pControl->setPalette(palette());
        break;
    case QEvent::ContentsRectChange: ContentChanged(); break;
    default: break;
    }
    QFrame::changeEvent(e);
}

void CLxRichText::resizeEvent(QResizeEvent* e) {
    m_pPrivate->bSizeChanged = e->size() != e->oldSize();
    if (m_pPrivate->bSizeChanged)
        m_pPrivate->bTextLayoutDirty = true;
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
    m_pPrivate->bPainted = true;
    if (!m_pPrivate->pLayout)
        return;
    const QRect cr = contentsRect();
    painter.translate(cr.topLeft());
    painter.setClipRect(QRect(QPoint(0, 0), cr.size()));
    // Without a text control there is no selection: the widget's palette is the whole context.
    QAbstractTextDocumentLayout::PaintContext ctx;
    if (m_pPrivate->pControl)
        ctx = m_pPrivate->pControl->getPaintContext(this);
    else
        ctx.palette = palette();
    ctx.cursorPosition = -1;  // a label shows no caret
    lx_ui_res::Provider* pRes = lx_ui_res::Provider::instance();
    const QColor selection = pRes->color(m_pPrivate->strSelectionColorKey);
    for (auto& sel : ctx.selections) {
        if (selection.isValid())
            sel.format.setBackground(selection);
        sel.format.clearForeground();  // the text keeps its own colours under the selection
    }
    if (m_pPrivate->spConfig) {
        const QColor text = pRes->color(m_pPrivate->spConfig->strTextColor);
        if (text.isValid())
            ctx.palette.setColor(QPalette::Text, text);
    }
    ctx.clip = QRectF(e->rect().translated(-cr.topLeft()));
    m_pPrivate->pLayout->draw(&painter, ctx);
}
