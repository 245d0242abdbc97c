#include <LxUIKit/DevTools/Spy/LxObjectEventView_p.h>

#include <LxUIKit/LxUIKitLog_p.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMetaEnum>
#include <QMouseEvent>
#include <QMoveEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QTime>
#include <QVBoxLayout>
#include <QWheelEvent>

LxObjectEventView::LxObjectEventView(QWidget* parent) : QWidget(parent) {
    m_pFilter = new QLineEdit(this);
    m_pFilter->setPlaceholderText(QStringLiteral("Event types, e.g. Mouse, Key, Resize"));
    m_pPause = new QCheckBox(QStringLiteral("Pause"), this);
    auto* clear = new QPushButton(QStringLiteral("Clear"), this);
    m_pLog = new QPlainTextEdit(this);
    m_pLog->setReadOnly(true);
    m_pLog->setMaximumBlockCount(kMaxLines);
    m_pLog->setLineWrapMode(QPlainTextEdit::NoWrap);
    auto* row = new QHBoxLayout;
    row->addWidget(m_pFilter, 1);
    row->addWidget(m_pPause);
    row->addWidget(clear);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    v->addLayout(row);
    v->addWidget(m_pLog, 1);
    LXUIKIT_SAFE_CONNECT(clear, &QPushButton::clicked, m_pLog.data(), &QPlainTextEdit::clear);
    OnSelectedPseudoWidgetChanged(SelectedPseudoWidget(), false);
}

LxObjectEventView::~LxObjectEventView() { Watch(nullptr); }

void LxObjectEventView::Watch(QObject* obj) {
    if (m_pWatched)
        m_pWatched->removeEventFilter(this);
    m_pWatched = obj;
    if (obj)
        obj->installEventFilter(this);
}

void LxObjectEventView::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    QObject* obj = pw.objectOrPhantomContainer();
    if (obj && obj->isWidgetType() && static_cast<QWidget*>(obj)->window() == window()) {
        Watch(nullptr);
        m_pLog->appendPlainText(QStringLiteral("-- the inspector's own widgets are not watched"));
        return;
    }
    Watch(obj);
    if (obj)
        m_pLog->appendPlainText(
            QStringLiteral("-- watching %1 %2").arg(QLatin1String(obj->metaObject()->className()), obj->objectName()));
}

bool LxObjectEventView::PassesFilter(const QString& filter, QEvent::Type type) {
    const QString name = QLatin1String(QMetaEnum::fromType<QEvent::Type>().valueToKey(type));
    const QStringList words = filter.split(QLatin1Char(','), Qt::SkipEmptyParts);
    bool any = words.isEmpty();
    for (const QString& w : words)
        any = any || (!w.trimmed().isEmpty() && name.contains(w.trimmed(), Qt::CaseInsensitive));
    return any;
}

QString LxObjectEventView::Describe(const QEvent* ev) {
    const char* key = QMetaEnum::fromType<QEvent::Type>().valueToKey(ev->type());
    QString s = key ? QString::fromLatin1(key) : QStringLiteral("User(%1)").arg(int(ev->type()));
    switch (ev->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove: {
        const auto* me = static_cast<const QMouseEvent*>(ev);
        s += QStringLiteral(" pos=(%1,%2) button=%3").arg(me->x()).arg(me->y()).arg(int(me->button()));
        break;
    }
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto* ke = static_cast<const QKeyEvent*>(ev);
        s += QStringLiteral(" key=0x%1 text=\"%2\"").arg(ke->key(), 0, 16).arg(ke->text());
        break;
    }
    case QEvent::Resize: {
        const auto* re = static_cast<const QResizeEvent*>(ev);
        s += QStringLiteral(" %1x%2 -> %3x%4")
                 .arg(re->oldSize().width())
                 .arg(re->oldSize().height())
                 .arg(re->size().width())
                 .arg(re->size().height());
        break;
    }
    case QEvent::Move: {
        const auto* mv = static_cast<const QMoveEvent*>(ev);
        s += QStringLiteral(" (%1,%2) -> (%3,%4)")
                 .arg(mv->oldPos().x())
                 .arg(mv->oldPos().y())
                 .arg(mv->pos().x())
                 .arg(mv->pos().y());
        break;
    }
    case QEvent::Wheel: {
        const auto* we = static_cast<const QWheelEvent*>(ev);
        s += QStringLiteral(" delta=%1").arg(we->angleDelta().y());
        break;
    }
    default: break;
    }
    return s;
}

bool LxObjectEventView::eventFilter(QObject* obj, QEvent* ev) {
    if (obj == m_pWatched && !m_pPause->isChecked() && PassesFilter(m_pFilter->text(), ev->type()))
        m_pLog->appendPlainText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz  ")) + Describe(ev));
    return QWidget::eventFilter(obj, ev);
}
