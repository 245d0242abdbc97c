#include <LxUIKit/LxUIKitLog_p.h>
#include <LxUIKit/QAnchorLayout.h>
#include <LxUIKit/QAnchorLayout_p.h>

#include <QEvent>
#include <QHash>
#include <QPointer>
#include <QVariant>
#include <QWidget>

#include <cmath>

namespace lx_anchor {

namespace {
// Pixel values are clamped here so that no arithmetic on them can overflow an int.
constexpr double kMaxPixels = 1 << 24;

bool ReadNumbers(const QString& token, int count, double* out) {
    const int colon = token.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return false;
    const QStringList nums = token.mid(colon + 1).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (nums.size() != count)
        return false;
    for (int i = 0; i < count; ++i) {
        bool ok = false;
        out[i] = nums[i].toDouble(&ok);
        if (!ok || !std::isfinite(out[i]))
            return false;
    }
    return true;
}
}  // namespace

const std::vector<std::pair<QString, TokenKind>>& ClassificationOrder() {
    static const std::vector<std::pair<QString, TokenKind>> s_order = {
        {QStringLiteral("LeftOfSibling"), TokenKind::LeftOfSibling},
        {QStringLiteral("RightOfSibling"), TokenKind::RightOfSibling},
        {QStringLiteral("TopOfSibling"), TokenKind::TopOfSibling},
        {QStringLiteral("BottomOfSibling"), TokenKind::BottomOfSibling},
        {QStringLiteral("LeftAlignSibling"), TokenKind::LeftAlignSibling},
        {QStringLiteral("RightAlignSibling"), TokenKind::RightAlignSibling},
        {QStringLiteral("TopAlignSibling"), TokenKind::TopAlignSibling},
        {QStringLiteral("BottomAlignSibling"), TokenKind::BottomAlignSibling},
        {QStringLiteral("LeftTopSibling"), TokenKind::LeftTopSibling},
        {QStringLiteral("RightTopSibling"), TokenKind::RightTopSibling},
        {QStringLiteral("LeftBottomSibling"), TokenKind::LeftBottomSibling},
        {QStringLiteral("RightBottomSibling"), TokenKind::RightBottomSibling},
        {QStringLiteral("CenterAlignSibling"), TokenKind::CenterAlignSibling},
        {QStringLiteral("HCenterAlignSibling"), TokenKind::HCenterAlignSibling},
        {QStringLiteral("VCenterAlignSibling"), TokenKind::VCenterAlignSibling},
        {QStringLiteral("Left"), TokenKind::Left},
        {QStringLiteral("Right"), TokenKind::Right},
        {QStringLiteral("Top"), TokenKind::Top},
        {QStringLiteral("Bottom"), TokenKind::Bottom},
        {QStringLiteral("Center"), TokenKind::Center},
        {QStringLiteral("HCenter"), TokenKind::HCenter},
        {QStringLiteral("VCenter"), TokenKind::VCenter},
        {QStringLiteral("Size"), TokenKind::Size},
        {QStringLiteral("Margin"), TokenKind::Margin},
        {QStringLiteral("SameSizeAs"), TokenKind::SameSizeAs},
        {QStringLiteral("SameWidthAs"), TokenKind::SameWidthAs},
        {QStringLiteral("SameHeightAs"), TokenKind::SameHeightAs},
    };
    return s_order;
}

Indicator ParseIndicator(const QStringList& parts) {
    Indicator ind;
    const QString text = parts.isEmpty() ? QString() : parts.last().trimmed();
    bool ok = false;
    const int n = text.toInt(&ok);
    if (ok) {
        ind.enKind = n < 0 ? Indicator::Relative : Indicator::Position;
        ind.i32Value = n;
    } else {
        ind.enKind = Indicator::Name;
        ind.strName = text;
    }
    return ind;
}

int ValueOrPercentageToInt(double value, int total) {
    if (!std::isfinite(value))
        return 0;
    if (value > 0 && value <= 1.0)
        return static_cast<int>(total * value);
    return static_cast<int>(qBound(-kMaxPixels, value, kMaxPixels));
}

std::vector<Token> ParseFlags(const QString& flags, QStringList* errors) {
    std::vector<Token> tokens;
    const auto& order = ClassificationOrder();
    const auto parts = flags.split(QLatin1Char(','));
    for (const QString& raw : parts) {
        const QString text = raw.trimmed();
        if (text.isEmpty())
            continue;
        Token t;
        bool bKnown = false;
        for (const auto& form : order) {
            const TokenKind kind = form.second;
            const bool bExact = kind == TokenKind::Center || kind == TokenKind::HCenter || kind == TokenKind::VCenter;
            if (bExact ? text == form.first : text.startsWith(form.first)) {
                t.enKind = kind;
                bKnown = true;
                break;
            }
        }
        QString strError;
        if (!bKnown) {
            strError = QStringLiteral("unknown token \"%1\"").arg(text);
        } else if (t.enKind <= TokenKind::VCenterAlignSibling || t.enKind >= TokenKind::SameSizeAs) {
            t.indicator = ParseIndicator(text.split(QLatin1Char(':')));
        } else if (t.enKind <= TokenKind::Bottom) {
            const QStringList parts = text.split(QLatin1Char(':'));
            const QString name = ClassificationOrder()[size_t(t.enKind)].first;
            if (parts.first().trimmed() != name) {
                strError = QStringLiteral("unknown token \"%1\"").arg(text);
            } else if (parts.size() == 2) {
                bool ok = false;
                t.adValues[0] = parts[1].trimmed().toDouble(&ok);
                if (!ok || !std::isfinite(t.adValues[0])) {
                    strError = QStringLiteral("bad offset in \"%1\"").arg(text);
                }
            } else if (parts.size() > 2) {
                strError = QStringLiteral("bad offset in \"%1\"").arg(text);
            }
        } else if (t.enKind == TokenKind::Size) {
            if (!ReadNumbers(text, 2, t.adValues))
                strError = QStringLiteral("\"%1\" needs two numbers").arg(text);
        } else if (t.enKind == TokenKind::Margin) {
            if (!ReadNumbers(text, 4, t.adValues))
                strError = QStringLiteral("\"%1\" needs four numbers").arg(text);
        }
        if (strError.isEmpty()) {
            tokens.push_back(t);
        } else if (errors) {
            errors->append(strError);
        }
    }
    return tokens;
}

}  // namespace lx_anchor

// ---- QAnchorLayout ----------------------------------------------------------------------------

struct AnchorItem {
    QPointer<QWidget> pWidget;
    QLayoutItem* pItem = nullptr;
    QString strParsedFlags;  // the text `tokens` were read from
    bool bParsed = false;
    // The flags may have changed since the last read. A dynamic property announces its changes,
    // so it is read again only then; a class that declares the property itself is read every pass.
    bool bFlagsDirty = true;
    bool bStaticProperty = false;
    std::vector<lx_anchor::Token> tokens;
};

class QAnchorLayoutPrivate {
public:
    std::vector<AnchorItem> vecItems;
    mutable QSize sizeHintCache;
    mutable QSize minimumCache;

    // Re-reads the item's flags when its property text changed since the last read.
    void Refresh(AnchorItem& item) {
        if (item.bParsed && !item.bFlagsDirty && !item.bStaticProperty)
            return;
        item.bFlagsDirty = false;
        const QString flags =
            item.pWidget ? item.pWidget->property(QAnchorLayout::kFlagsProperty).toString() : QString();
        if (item.bParsed && flags == item.strParsedFlags)
            return;
        QStringList errors;
        item.tokens = lx_anchor::ParseFlags(flags, &errors);
        item.strParsedFlags = flags;
        item.bParsed = true;
        if (!errors.isEmpty()) {
            LXUIKIT_LOG_WARN("QAnchorLayout: flags \"{}\" of widget \"{}\" ignored in part: {}", flags,
                             item.pWidget ? item.pWidget->objectName() : QString(), errors.join(QStringLiteral("; ")));
        }
    }

    // Index of the sibling the indicator names, -1 when none (an index out of range asserts).
    int Resolve(const lx_anchor::Indicator& ind, int selfIndex, QHash<QString, int>* names) const {
        using lx_anchor::Indicator;
        const int n = int(vecItems.size());
        if (ind.enKind == Indicator::Name) {
            if (names) {
                if (names->isEmpty()) {
                    for (int i = n - 1; i >= 0; --i) {
                        if (vecItems[size_t(i)].pWidget)
                            names->insert(vecItems[size_t(i)].pWidget->objectName(), i);
                    }
                }
                return names->value(ind.strName, -1);
            }
            for (int i = 0; i < n; ++i) {
                if (vecItems[size_t(i)].pWidget && vecItems[size_t(i)].pWidget->objectName() == ind.strName)
                    return i;
            }
            return -1;
        }
        const long long index =
            ind.enKind == Indicator::Relative ? (long long)selfIndex + ind.i32Value : (long long)ind.i32Value - 1;
        if (!LXUIKIT_ASSERT_TEXT(index >= 0 && index < n, "sibling index out of range"))
            return -1;
        return int(index);
    }

    // Computes every item's rectangle in `parent`; `geoms` holds the starting geometries.
    void Compute(const QRect& parent, std::vector<QRect>& geoms, bool bForHint) {
        QHash<QString, int> names;
        for (size_t i = 0; i < vecItems.size(); ++i) {
            AnchorItem& item = vecItems[i];
            Refresh(item);
            QSize own = item.pWidget ? QAnchorLayout::getTargetSize(item.pWidget) : item.pItem->sizeHint();
            if (bForHint && item.pWidget)
                own = item.pWidget->sizeHint().expandedTo(QSize(0, 0));
            geoms[i] = lx_anchor::Place(item.tokens, parent, own, [&](const lx_anchor::Indicator& ind, QRect& out) {
                const int s = Resolve(ind, int(i), &names);
                if (s < 0)
                    return false;
                out = geoms[size_t(s)];
                return true;
            });
        }
    }
};

QAnchorLayout::QAnchorLayout(QWidget* parent) : QLayout(parent), m_pD(std::make_unique<QAnchorLayoutPrivate>()) {}

QAnchorLayout::~QAnchorLayout() {
    for (AnchorItem& item : m_pD->vecItems) {
        if (item.pWidget)
            item.pWidget->removeEventFilter(this);
        delete item.pItem;
    }
}

void QAnchorLayout::addWidget(QWidget* widget, const QString& flags) {
    LXUIKIT_ASSERT_RETURN(widget);
    widget->setProperty(kFlagsProperty, flags);
    QLayout::addWidget(widget);
}

void QAnchorLayout::addItem(QLayoutItem* item) {
    LXUIKIT_ASSERT_RETURN(item);
    AnchorItem rec;
    rec.pWidget = item->widget();
    rec.pItem = item;
    if (rec.pWidget) {
        rec.pWidget->installEventFilter(this);
        rec.bStaticProperty = rec.pWidget->metaObject()->indexOfProperty(kFlagsProperty) >= 0;
    }
    m_pD->vecItems.push_back(std::move(rec));
    invalidate();
}

QLayoutItem* QAnchorLayout::itemAt(int index) const {
    if (index < 0 || index >= int(m_pD->vecItems.size()))
        return nullptr;
    return m_pD->vecItems[size_t(index)].pItem;
}

QLayoutItem* QAnchorLayout::takeAt(int index) {
    if (index < 0 || index >= int(m_pD->vecItems.size()))
        return nullptr;
    AnchorItem rec = std::move(m_pD->vecItems[size_t(index)]);
    m_pD->vecItems.erase(m_pD->vecItems.begin() + index);
    if (rec.pWidget)
        rec.pWidget->removeEventFilter(this);
    invalidate();
    return rec.pItem;
}

int QAnchorLayout::count() const { return int(m_pD->vecItems.size()); }

void QAnchorLayout::invalidate() {
    m_pD->sizeHintCache = QSize();
    m_pD->minimumCache = QSize();
    QLayout::invalidate();
}

QSize QAnchorLayout::sizeHint() const {
    if (m_pD->sizeHintCache.isValid())
        return m_pD->sizeHintCache;
    QSize largest(0, 0);
    for (const AnchorItem& item : m_pD->vecItems)
        largest = largest.expandedTo(item.pItem->sizeHint());
    std::vector<QRect> geoms(m_pD->vecItems.size());
    for (size_t i = 0; i < geoms.size(); ++i)
        geoms[i] = QRect(QPoint(0, 0), m_pD->vecItems[i].pItem->sizeHint());
    m_pD->Compute(QRect(QPoint(0, 0), largest), geoms, true);
    QRect bounds(QPoint(0, 0), largest);
    for (const QRect& r : geoms)
        bounds = bounds.united(r);
    const QMargins m = contentsMargins();
    m_pD->sizeHintCache = QSize(bounds.width() + m.left() + m.right(), bounds.height() + m.top() + m.bottom());
    return m_pD->sizeHintCache;
}

QSize QAnchorLayout::minimumSize() const {
    if (m_pD->minimumCache.isValid())
        return m_pD->minimumCache;
    QSize largest(0, 0);
    for (const AnchorItem& item : m_pD->vecItems)
        largest = largest.expandedTo(item.pItem->minimumSize());
    const QMargins m = contentsMargins();
    m_pD->minimumCache = largest + QSize(m.left() + m.right(), m.top() + m.bottom());
    return m_pD->minimumCache;
}

void QAnchorLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    if (m_pD->vecItems.empty())
        return;
    const QRect parent = rect.marginsRemoved(contentsMargins());
    std::vector<QRect> geoms(m_pD->vecItems.size());
    for (size_t i = 0; i < geoms.size(); ++i) {
        const AnchorItem& item = m_pD->vecItems[i];
        geoms[i] = item.pWidget ? item.pWidget->geometry() : item.pItem->geometry();
    }
    m_pD->Compute(parent, geoms, false);
    for (size_t i = 0; i < geoms.size(); ++i) {
        const AnchorItem& item = m_pD->vecItems[i];
        if (item.pWidget)
            item.pWidget->setGeometry(geoms[i]);
        else
            item.pItem->setGeometry(geoms[i]);
    }
}

QSize QAnchorLayout::getTargetSize(QWidget* widget) {
    if (!widget)
        return QSize();
    QSize size = widget->sizeHint();
    if (size.width() == -1)
        size.setWidth(widget->geometry().width());
    if (size.height() == -1)
        size.setHeight(widget->geometry().height());
    return size;
}

int QAnchorLayout::valueOrPercentageToInt(double value, int total) {
    return lx_anchor::ValueOrPercentageToInt(value, total);
}

int QAnchorLayout::CalcRelativeOffset(QString& token, int total) {
    const QStringList parts = token.split(QLatin1Char(':'));
    if (parts.size() != 2)
        return 0;
    return valueOrPercentageToInt(parts[1].toDouble(), total);
}

QWidget* QAnchorLayout::GetSiblingByIndecator(QStringList& parts, int selfIndex) {
    const int index = m_pD->Resolve(lx_anchor::ParseIndicator(parts), selfIndex, nullptr);
    return index < 0 ? nullptr : m_pD->vecItems[size_t(index)].pWidget.data();
}

bool QAnchorLayout::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange &&
        static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName() == kFlagsProperty) {
        for (AnchorItem& item : m_pD->vecItems) {
            if (item.pWidget == watched)
                item.bFlagsDirty = true;
        }
        invalidate();
    }
    return QLayout::eventFilter(watched, event);
}

// ---- QAnchorLayoutFlagBuilder -----------------------------------------------------------------

QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::Append(const QString& token) {
    if (!token.isEmpty())
        m_tokens.append(token);
    m_tokens.append(QStringLiteral(", "));
    return *this;
}

QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::AlignToParent(Alignment alignment) {
    switch (alignment) {
    case Left: return Append(QStringLiteral("Left"));
    case Right: return Append(QStringLiteral("Right"));
    case Top: return Append(QStringLiteral("Top"));
    case Bottom: return Append(QStringLiteral("Bottom"));
    case Center: return Append(QStringLiteral("Center"));
    case HCenter: return Append(QStringLiteral("HCenter"));
    case VCenter: return Append(QStringLiteral("VCenter"));
    }
    return Append(QString());
}

QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::AlignToSibling(const QString& name, Alignment alignment) {
    switch (alignment) {
    case Left: return Append(QStringLiteral("LeftAlignSibling:") + name);
    case Right: return Append(QStringLiteral("RightAlignSibling") + name);  // no colon: kept as callers know it
    case Top: return Append(QStringLiteral("TopAlignSibling:") + name);
    case Bottom: return Append(QStringLiteral("BottomAlignSibling:") + name);
    case Center: return Append(QStringLiteral("CenterAlignSibling:") + name);
    case HCenter: return Append(QStringLiteral("HCenterAlignSibling:") + name);
    case VCenter: return Append(QStringLiteral("VCenterAlignSibling:") + name);
    }
    return Append(QString());
}

QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::SameSizeAsSibling(const QString& name) {
    return Append(QStringLiteral("SameSizeAs:") + name);
}
QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::SameWidthAsSibling(const QString& name) {
    return Append(QStringLiteral("SameWidthAs:") + name);
}
QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::SameHeightAsSibling(const QString& name) {
    return Append(QStringLiteral("SameHeightAs:") + name);
}

QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::SizeToParent(double width, double height) {
    return Append(QStringLiteral("Size:") + QString::number(width, 'g', 6) + QLatin1Char(' ') +
                  QString::number(height, 'g', 6));
}

QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::Margin(double left, double top, double right, double bottom) {
    return Append(QStringLiteral("Margin:%1 %2 %3 %4, ").arg(left).arg(top).arg(right).arg(bottom));
}

QAnchorLayoutFlagBuilder& QAnchorLayoutFlagBuilder::RelativeToSibling(const QString& name, SiblingPosition position) {
    switch (position) {
    case LeftOf: return Append(QStringLiteral("LeftOfSibling:") + name);
    case TopOf: return Append(QStringLiteral("TopOfSibling:") + name);
    case RightOf: return Append(QStringLiteral("RightOfSibling:") + name);
    case BottomOf: return Append(QStringLiteral("BottomOfSibling:") + name);
    case LeftTop: return Append(QStringLiteral("LeftTopSibling:") + name);
    case RightTop: return Append(QStringLiteral("RightTopSibling:") + name);
    case LeftBottom: return Append(QStringLiteral("LeftBottomSibling:") + name);
    }
    return Append(QString());
}
