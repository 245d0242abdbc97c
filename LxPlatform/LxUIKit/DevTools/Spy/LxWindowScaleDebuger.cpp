#include <LxUIKit/DevTools/Spy/LxWindowScaleDebuger_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <cmath>

const QVector<qreal>& LxWindowScaleDebuger::Ratios() {
    static const QVector<qreal> s_ratios = {1.0, 1.25, 1.5, 2.0};
    return s_ratios;
}

LxWindowScaleDebuger::LxWindowScaleDebuger(QWidget* parent) : QWidget(parent) {
    m_pRefresh = new QPushButton(QStringLiteral("Refresh"), this);
    m_pRefresh->setToolTip(QStringLiteral("Render the window again"));
    m_pActual = new QCheckBox(QStringLiteral("Actual pixels"), this);
    m_pActual->setToolTip(QStringLiteral("Show every picture pixel for pixel instead of fitting it"));
    m_pStatus = new QLabel(this);
    // A long window title must not widen the whole tab (and squeeze the widget tree beside it).
    m_pStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_pScroll = new QScrollArea(this);
    m_pScroll->setWidgetResizable(true);
    m_pStrip = new QWidget(m_pScroll);
    m_pStrip->setObjectName(QStringLiteral("SpyScaleStrip"));
    new QHBoxLayout(m_pStrip);
    m_pScroll->setWidget(m_pStrip);

    auto* top = new QHBoxLayout;
    top->addWidget(m_pRefresh);
    top->addWidget(m_pActual);
    top->addWidget(m_pStatus, 1);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    v->addLayout(top);
    v->addWidget(m_pScroll, 1);
    LXUIKIT_SAFE_CONNECT(m_pRefresh.data(), &QPushButton::clicked, this, &LxWindowScaleDebuger::Render);
    LXUIKIT_SAFE_CONNECT(m_pActual.data(), &QCheckBox::toggled, this, &LxWindowScaleDebuger::ShowPixmaps);
    m_pWindow = SelectedPseudoWidget().window();
}

QPixmap LxWindowScaleDebuger::RenderAt(QWidget* window, qreal ratio) {
    if (!window || ratio <= 0)
        return QPixmap();
    const QSize pixels = (QSizeF(window->size()) * ratio).toSize();
    if (pixels.isEmpty())
        return QPixmap();
    QPixmap pm(pixels);
    pm.setDevicePixelRatio(ratio);
    pm.fill(window->palette().window().color());
    window->render(&pm, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    return pm;
}

void LxWindowScaleDebuger::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    m_pWindow = pw.window();
    m_bDirty = true;
    if (isVisible())
        Render();
}

void LxWindowScaleDebuger::showEvent(QShowEvent* ev) {
    QWidget::showEvent(ev);
    if (m_bDirty)
        Render();
}

void LxWindowScaleDebuger::Render() {
    m_bDirty = false;
    m_pixmaps.clear();
    if (m_pWindow && m_pWindow->window() == window()) {
        // Rendering the inspector into itself while it lays out its own pictures goes round in circles.
        m_pStatus->setText(QStringLiteral("The inspector's own window is not rendered."));
        ShowPixmaps();
        return;
    }
    if (m_pWindow) {
        for (qreal ratio : Ratios())
            m_pixmaps << RenderAt(m_pWindow, ratio);
    }
    m_pStatus->setText(m_pWindow
                           ? QStringLiteral("%1 \"%2\", %3 × %4")
                                 .arg(QLatin1String(m_pWindow->metaObject()->className()), m_pWindow->windowTitle())
                                 .arg(m_pWindow->width())
                                 .arg(m_pWindow->height())
                           : QStringLiteral("Select a widget: its window is rendered here."));
    ShowPixmaps();
}

void LxWindowScaleDebuger::ShowPixmaps() {
    QLayout* strip = m_pStrip->layout();
    while (QLayoutItem* item = strip->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const qreal screenRatio = devicePixelRatioF();
    for (int i = 0; i < m_pixmaps.size(); ++i) {
        const QPixmap& pm = m_pixmaps[i];
        const qreal ratio = pm.devicePixelRatio();
        double scale = 1.0;
        if (!m_pActual->isChecked() && !pm.isNull()) {
            scale = qMin(1.0, qMin(double(kMaxShownWidth) / pm.width(), double(kMaxShownHeight) / pm.height()));
        }
        QPixmap shown = qFuzzyCompare(scale, 1.0) ? pm
                                                  : pm.scaled((QSizeF(pm.size()) * scale).toSize(), Qt::KeepAspectRatio,
                                                              Qt::SmoothTransformation);
        shown.setDevicePixelRatio(screenRatio);  // one picture pixel on one screen pixel
        auto* cell = new QWidget(m_pStrip);
        auto* v = new QVBoxLayout(cell);
        v->setContentsMargins(0, 0, 0, 0);
        QString caption = QStringLiteral("×%1 · %2 × %3 px").arg(ratio).arg(pm.width()).arg(pm.height());
        if (!qFuzzyCompare(scale, 1.0))
            caption += QStringLiteral(" · shown at %1 %").arg(std::lround(scale * 100));
        auto* label = new QLabel(caption, cell);
        label->setObjectName(QStringLiteral("SpyScaleCaption"));
        auto* image = new QLabel(cell);
        image->setPixmap(shown);
        image->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        v->addWidget(label);
        v->addWidget(image);
        v->addStretch(1);
        strip->addWidget(cell);
    }
    if (auto* box = qobject_cast<QBoxLayout*>(strip))
        box->addStretch(1);
}
