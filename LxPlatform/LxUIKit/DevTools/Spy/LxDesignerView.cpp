#include <LxUIKit/DevTools/Spy/LxDesignerView_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLayout>
#include <QMetaEnum>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>

namespace {

constexpr int kCoordinateLimit = 100000;

bool SameState(const LxDesignerView::Snapshot& a, const LxDesignerView::Snapshot& b) {
    return a.geometry == b.geometry && a.sizePolicy == b.sizePolicy && a.contentsMargins == b.contentsMargins &&
           a.hasLayout == b.hasLayout && a.layoutMargins == b.layoutMargins;
}

QSpinBox* MakeSpin(QWidget* parent, int minimum, int maximum) {
    auto* s = new QSpinBox(parent);
    s->setRange(minimum, maximum);
    s->setKeyboardTracking(false);  // apply on Enter, not on every digit typed
    s->setAccelerated(true);
    return s;
}

// Four spin boxes in a row (left, top, right, bottom), each applying through `apply`.
QWidget* MarginsRow(QWidget* parent, std::array<QPointer<QSpinBox>, 4>& boxes,
                    const std::function<void(const QMargins&)>& apply) {
    auto* row = new QWidget(parent);
    auto* h = new QHBoxLayout(row);
    h->setContentsMargins(0, 0, 0, 0);
    const QStringList tips = {QStringLiteral("left"), QStringLiteral("top"), QStringLiteral("right"),
                              QStringLiteral("bottom")};
    for (size_t i = 0; i < boxes.size(); ++i) {
        boxes[i] = MakeSpin(row, 0, 999);
        boxes[i]->setToolTip(tips[int(i)]);
        h->addWidget(boxes[i]);
        QObject::connect(boxes[i].data(), QOverload<int>::of(&QSpinBox::valueChanged), row, [&boxes, apply] {
            apply(QMargins(boxes[0]->value(), boxes[1]->value(), boxes[2]->value(), boxes[3]->value()));
        });
    }
    return row;
}

void ShowMargins(std::array<QPointer<QSpinBox>, 4>& boxes, const QMargins& m) {
    const int values[] = {m.left(), m.top(), m.right(), m.bottom()};
    for (size_t i = 0; i < boxes.size(); ++i) {
        const QSignalBlocker block(boxes[i].data());
        boxes[i]->setValue(values[i]);
    }
}

// Follows the target's own moves and resizes (a layout placing it, a window dragged) so the
// fields show the truth.
class TargetWatcher : public QObject {
public:
    TargetWatcher(QObject* parent, std::function<void()> onChange) : QObject(parent), m_fn(std::move(onChange)) {}
    bool eventFilter(QObject* obj, QEvent* ev) override {
        const QEvent::Type t = ev->type();
        if (t == QEvent::Move || t == QEvent::Resize || t == QEvent::LayoutRequest)
            m_fn();
        return QObject::eventFilter(obj, ev);
    }

private:
    std::function<void()> m_fn;
};

}  // namespace

LxDesignerView::Snapshot LxDesignerView::Snapshot::Of(QWidget* w) {
    Snapshot s;
    s.widget = w;
    s.geometry = w->geometry();
    s.sizePolicy = w->sizePolicy();
    s.contentsMargins = w->contentsMargins();
    if (QLayout* l = w->layout()) {
        s.hasLayout = true;
        s.layoutMargins = l->contentsMargins();
    }
    return s;
}

void LxDesignerView::Snapshot::ApplyTo(QWidget* w) const {
    w->setSizePolicy(sizePolicy);
    w->setContentsMargins(contentsMargins);
    if (hasLayout && w->layout())
        w->layout()->setContentsMargins(layoutMargins);
    w->setGeometry(geometry);
}

LxDesignerView::LxDesignerView(QWidget* parent) : QWidget(parent) {
    m_pTitle = new QLabel(this);
    m_pTitle->setWordWrap(true);
    m_pEditor = new QWidget(this);

    auto* geometryGroup = new QGroupBox(QStringLiteral("Geometry"), m_pEditor);
    auto* grid = new QGridLayout(geometryGroup);
    const QStringList names = {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("width"),
                               QStringLiteral("height")};
    for (int i = 0; i < 4; ++i) {
        QSpinBox* box = i < 2 ? MakeSpin(geometryGroup, -kCoordinateLimit, kCoordinateLimit)
                              : MakeSpin(geometryGroup, 0, kCoordinateLimit);
        m_geometry[size_t(i)] = box;
        grid->addWidget(new QLabel(names[i], geometryGroup), i / 2, (i % 2) * 2);
        grid->addWidget(box, i / 2, (i % 2) * 2 + 1);
        LXUIKIT_SAFE_CONNECT(box, QOverload<int>::of(&QSpinBox::valueChanged), this, [this, i](int v) {
            Apply([i, v](QWidget* w) {
                QRect r = w->geometry();
                switch (i) {
                case 0: r.moveLeft(v); break;
                case 1: r.moveTop(v); break;
                case 2: r.setWidth(v); break;
                default: r.setHeight(v); break;
                }
                w->setGeometry(r);
            });
        });
    }
    auto* arrows = new QHBoxLayout;
    arrows->addWidget(ArrowButton(QStringLiteral("←"), QStringLiteral("Move left"), -1, 0, 0, 0));
    arrows->addWidget(ArrowButton(QStringLiteral("→"), QStringLiteral("Move right"), 1, 0, 0, 0));
    arrows->addWidget(ArrowButton(QStringLiteral("↑"), QStringLiteral("Move up"), 0, -1, 0, 0));
    arrows->addWidget(ArrowButton(QStringLiteral("↓"), QStringLiteral("Move down"), 0, 1, 0, 0));
    arrows->addSpacing(12);
    arrows->addWidget(ArrowButton(QStringLiteral("W−"), QStringLiteral("Narrower"), 0, 0, -1, 0));
    arrows->addWidget(ArrowButton(QStringLiteral("W+"), QStringLiteral("Wider"), 0, 0, 1, 0));
    arrows->addWidget(ArrowButton(QStringLiteral("H−"), QStringLiteral("Shorter"), 0, 0, 0, -1));
    arrows->addWidget(ArrowButton(QStringLiteral("H+"), QStringLiteral("Taller"), 0, 0, 0, 1));
    arrows->addStretch(1);
    grid->addLayout(arrows, 2, 0, 1, 4);
    auto* hint = new QLabel(QStringLiteral("1 px a click, 10 px with Shift"), geometryGroup);
    hint->setEnabled(false);
    grid->addWidget(hint, 3, 0, 1, 4);

    auto* policyGroup = new QGroupBox(QStringLiteral("Size policy"), m_pEditor);
    auto* policyForm = new QFormLayout(policyGroup);
    m_pHPolicy = PolicyBox();
    m_pVPolicy = PolicyBox();
    policyForm->addRow(QStringLiteral("horizontal"), m_pHPolicy);
    policyForm->addRow(QStringLiteral("vertical"), m_pVPolicy);
    for (QComboBox* box : {m_pHPolicy.data(), m_pVPolicy.data()}) {
        LXUIKIT_SAFE_CONNECT(box, QOverload<int>::of(&QComboBox::activated), this, [this] {
            SetSizePolicy(QSizePolicy::Policy(m_pHPolicy->currentData().toInt()),
                          QSizePolicy::Policy(m_pVPolicy->currentData().toInt()));
        });
    }

    auto* marginGroup = new QGroupBox(QStringLiteral("Contents margins (left, top, right, bottom)"), m_pEditor);
    auto* marginForm = new QFormLayout(marginGroup);
    marginForm->addRow(QStringLiteral("widget"),
                       MarginsRow(marginGroup, m_margins, [this](const QMargins& m) { SetContentsMargins(m); }));
    marginForm->addRow(QStringLiteral("layout"),
                       MarginsRow(marginGroup, m_layoutMargins, [this](const QMargins& m) { SetLayoutMargins(m); }));
    m_pLayoutNote = new QLabel(marginGroup);
    m_pLayoutNote->setEnabled(false);
    marginForm->addRow(QString(), m_pLayoutNote);

    m_pUndo = new QPushButton(QStringLiteral("Undo"), m_pEditor);
    m_pUndo->setToolTip(QStringLiteral("Undo the last change (Ctrl+Z)"));
    LXUIKIT_SAFE_CONNECT(m_pUndo.data(), &QPushButton::clicked, this, [this] { Undo(); });
    auto* undoKey = new QShortcut(QKeySequence::Undo, this);
    undoKey->setContext(Qt::WidgetWithChildrenShortcut);
    LXUIKIT_SAFE_CONNECT(undoKey, &QShortcut::activated, this, [this] { Undo(); });

    auto* editorLayout = new QVBoxLayout(m_pEditor);
    editorLayout->setContentsMargins(0, 0, 0, 0);
    editorLayout->addWidget(geometryGroup);
    editorLayout->addWidget(policyGroup);
    editorLayout->addWidget(marginGroup);
    auto* undoRow = new QHBoxLayout;
    undoRow->addWidget(m_pUndo);
    undoRow->addStretch(1);
    editorLayout->addLayout(undoRow);
    editorLayout->addStretch(1);

    auto* v = new QVBoxLayout(this);
    v->addWidget(m_pTitle);
    v->addWidget(m_pEditor, 1);
    m_pWatcher = new TargetWatcher(this, [this] { Refresh(); });
    SetTarget(SelectedPseudoWidget());
}

QWidget* LxDesignerView::ArrowButton(const QString& text, const QString& tip, int dx, int dy, int dw, int dh) {
    auto* b = new QToolButton(this);
    b->setText(text);
    b->setToolTip(tip + QStringLiteral(" (Shift: 10 px)"));
    b->setAutoRepeat(true);
    LXUIKIT_SAFE_CONNECT(b, &QToolButton::clicked, this, [this, dx, dy, dw, dh] {
        const int step = NudgeStep(QGuiApplication::keyboardModifiers());
        Nudge(dx * step, dy * step, dw * step, dh * step);
    });
    return b;
}

QComboBox* LxDesignerView::PolicyBox() {
    auto* box = new QComboBox(this);
    const QMetaEnum e = QMetaEnum::fromType<QSizePolicy::Policy>();
    for (int i = 0; i < e.keyCount(); ++i)
        box->addItem(QLatin1String(e.key(i)), e.value(i));
    return box;
}

int LxDesignerView::NudgeStep(Qt::KeyboardModifiers modifiers) { return modifiers & Qt::ShiftModifier ? 10 : 1; }

template <typename Change>
void LxDesignerView::Apply(Change change) {
    QWidget* w = m_pTarget;
    if (!w)
        return;
    const Snapshot before = Snapshot::Of(w);
    change(w);
    if (!SameState(before, Snapshot::Of(w))) {
        m_undo.append(before);
        if (m_undo.size() > kMaxUndo)
            m_undo.removeFirst();
    }
    Refresh();
}

void LxDesignerView::Nudge(int dx, int dy, int dw, int dh) {
    Apply([=](QWidget* w) {
        const QRect r = w->geometry();
        w->setGeometry(r.x() + dx, r.y() + dy, qMax(0, r.width() + dw), qMax(0, r.height() + dh));
    });
}

void LxDesignerView::SetSizePolicy(QSizePolicy::Policy horizontal, QSizePolicy::Policy vertical) {
    Apply([=](QWidget* w) {
        QSizePolicy p = w->sizePolicy();
        p.setHorizontalPolicy(horizontal);
        p.setVerticalPolicy(vertical);
        w->setSizePolicy(p);
    });
}

void LxDesignerView::SetContentsMargins(const QMargins& m) {
    Apply([&m](QWidget* w) { w->setContentsMargins(m); });
}

void LxDesignerView::SetLayoutMargins(const QMargins& m) {
    Apply([&m](QWidget* w) {
        if (QLayout* l = w->layout())
            l->setContentsMargins(m);
    });
}

bool LxDesignerView::Undo() {
    while (!m_undo.isEmpty()) {
        const Snapshot s = m_undo.takeLast();
        if (!s.widget)
            continue;  // made on a widget that is gone
        s.ApplyTo(s.widget);
        Refresh();
        return true;
    }
    Refresh();
    return false;
}

void LxDesignerView::SetTarget(const PseudoWidget& pw) {
    if (m_pTarget && m_pWatcher)
        m_pTarget->removeEventFilter(m_pWatcher);
    m_pTarget = pw.widget();
    if (m_pTarget && m_pWatcher && m_pTarget != this && !isAncestorOf(m_pTarget))
        m_pTarget->installEventFilter(m_pWatcher);
    if (!m_pTarget) {
        m_pTitle->setText(pw.isPhantom() ? QStringLiteral("<b>%1</b> is drawn by its container; select the "
                                                          "container to edit it.")
                                               .arg(pw.className().toHtmlEscaped())
                                         : QStringLiteral("Select a widget to edit it."));
    } else {
        m_pTitle->setText(QStringLiteral("<b>%1</b> %2")
                              .arg(pw.className().toHtmlEscaped(), m_pTarget->objectName().toHtmlEscaped()));
    }
    Refresh();
}

void LxDesignerView::Refresh() {
    QWidget* w = m_pTarget;
    m_pEditor->setEnabled(w != nullptr);
    m_pUndo->setEnabled(
        std::any_of(m_undo.cbegin(), m_undo.cend(), [](const Snapshot& s) { return !s.widget.isNull(); }));
    if (!w)
        return;
    const QRect r = w->geometry();
    const int values[] = {r.x(), r.y(), r.width(), r.height()};
    for (size_t i = 0; i < m_geometry.size(); ++i) {
        const QSignalBlocker block(m_geometry[i].data());
        m_geometry[i]->setValue(values[i]);
    }
    const QSizePolicy p = w->sizePolicy();
    {
        const QSignalBlocker b1(m_pHPolicy.data());
        const QSignalBlocker b2(m_pVPolicy.data());
        m_pHPolicy->setCurrentIndex(m_pHPolicy->findData(int(p.horizontalPolicy())));
        m_pVPolicy->setCurrentIndex(m_pVPolicy->findData(int(p.verticalPolicy())));
    }
    ShowMargins(m_margins, w->contentsMargins());
    QLayout* l = w->layout();
    for (const auto& box : m_layoutMargins)
        box->setEnabled(l != nullptr);
    ShowMargins(m_layoutMargins, l ? l->contentsMargins() : QMargins());
    m_pLayoutNote->setText(
        l ? QStringLiteral("%1, spacing %2").arg(QLatin1String(l->metaObject()->className())).arg(l->spacing())
          : QStringLiteral("the widget has no layout"));
}
