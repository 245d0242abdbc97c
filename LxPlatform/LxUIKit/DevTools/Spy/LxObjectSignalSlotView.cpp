#include <LxUIKit/DevTools/Spy/LxObjectSignalSlotView_p.h>

#include <QtCore/private/qmetaobject_p.h>
#include <QtCore/private/qobject_p.h>
#include <QHeaderView>
#include <QMetaMethod>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QString Name(const QObject* o) {
    if (!o)
        return QStringLiteral("(deleted)");
    QString s = QString::fromLatin1(o->metaObject()->className());
    if (!o->objectName().isEmpty())
        s += QLatin1Char('#') + o->objectName();
    return s;
}

QString ReceiverMethod(const QObjectPrivate::Connection* c, const QObject* receiver) {
    if (c->isSlotObject || !receiver)
        return QStringLiteral("<functor>");
    return QString::fromLatin1(receiver->metaObject()->method(c->method()).methodSignature());
}

QString SignalName(const QObject* sender, int signalIndex) {
    if (!sender)
        return QStringLiteral("?");
    const QMetaMethod m = QMetaObjectPrivate::signal(sender->metaObject(), signalIndex);
    return m.isValid() ? QString::fromLatin1(m.methodSignature()) : QStringLiteral("signal %1").arg(signalIndex);
}

}  // namespace

LxObjectSignalSlotView::LxObjectSignalSlotView(QWidget* parent) : QWidget(parent) {
    m_pTree = new QTreeWidget(this);
    m_pTree->setColumnCount(3);
    m_pTree->setHeaderLabels({QStringLiteral("Signal"), QStringLiteral("Object"), QStringLiteral("Slot / signal")});
    m_pTree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(m_pTree);
    OnSelectedPseudoWidgetChanged(SelectedPseudoWidget(), false);
}

QList<LxObjectSignalSlotView::Connection> LxObjectSignalSlotView::Outgoing(const QObject* obj) {
    QList<Connection> out;
    if (!obj)
        return out;
    const QObjectPrivate* d = QObjectPrivate::get(const_cast<QObject*>(obj));
    const QObjectPrivate::ConnectionData* cd = d->connections.loadRelaxed();
    if (!cd)
        return out;
    const QObjectPrivate::SignalVector* sv = cd->signalVector.loadRelaxed();
    if (!sv)
        return out;
    const QMetaObject* mo = obj->metaObject();
    for (int i = 0; i < mo->methodCount(); ++i) {
        const QMetaMethod m = mo->method(i);
        if (m.methodType() != QMetaMethod::Signal)
            continue;
        const int signalIndex = QMetaObjectPrivate::signalIndex(m);
        if (signalIndex < 0 || signalIndex >= sv->count())
            continue;
        for (const QObjectPrivate::Connection* c = sv->at(signalIndex).first.loadRelaxed(); c;
             c = c->nextConnectionList.loadRelaxed()) {
            const QObject* receiver = c->receiver.loadRelaxed();
            if (!receiver)
                continue;  // disconnected, waiting for clean-up
            out.append({QString::fromLatin1(m.methodSignature()), Name(receiver), ReceiverMethod(c, receiver)});
        }
    }
    return out;
}

QList<LxObjectSignalSlotView::Connection> LxObjectSignalSlotView::Incoming(const QObject* obj) {
    QList<Connection> out;
    if (!obj)
        return out;
    const QObjectPrivate* d = QObjectPrivate::get(const_cast<QObject*>(obj));
    const QObjectPrivate::ConnectionData* cd = d->connections.loadRelaxed();
    if (!cd)
        return out;
    for (const QObjectPrivate::Connection* c = cd->senders; c; c = c->next) {
        if (!c->receiver.loadRelaxed())
            continue;
        out.append({SignalName(c->sender, c->signal_index), Name(c->sender), ReceiverMethod(c, obj)});
    }
    return out;
}

void LxObjectSignalSlotView::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    m_pTree->clear();
    const QObject* obj = pw.isPhantom() && pw.phantomObject() ? pw.phantomObject() : pw.objectOrPhantomContainer();
    if (!obj)
        return;
    auto* outItem = new QTreeWidgetItem(m_pTree, QStringList(QStringLiteral("Signals out")));
    const auto outgoing = Outgoing(obj);
    for (const Connection& c : outgoing)
        new QTreeWidgetItem(outItem, {c.strSignal, c.strPeer, c.strMethod});
    auto* inItem = new QTreeWidgetItem(m_pTree, QStringList(QStringLiteral("Signals in")));
    const auto incoming = Incoming(obj);
    for (const Connection& c : incoming)
        new QTreeWidgetItem(inItem, {c.strSignal, c.strPeer, c.strMethod});
    outItem->setText(1, QString::number(outItem->childCount()));
    inItem->setText(1, QString::number(inItem->childCount()));
    m_pTree->expandAll();
}
