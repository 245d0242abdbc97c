#pragma once
// The selected object's connections (a phantom's container), both ways: for each of its signals,
// the receivers and their slots; and the connections from other objects into it. Qt offers no
// public listing of connections, so they are read from the object's private connection data on the
// GUI thread, without Qt's connection lock: an object whose connections change on another thread at
// that moment may show a stale list. A connection to a functor or lambda shows as "<functor>".
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QPointer>
#include <QTreeWidget>
#include <QWidget>

class LxObjectSignalSlotView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    struct Connection {
        QString strSignal;  // "clicked(bool)"
        QString strPeer;    // "QLabel#price" (receiver for outgoing, sender for incoming)
        QString strMethod;  // the slot or signal on the receiving side, or "<functor>"
    };
    explicit LxObjectSignalSlotView(QWidget* parent);
    static QList<Connection> Outgoing(const QObject* obj);
    static QList<Connection> Incoming(const QObject* obj);
    QTreeWidget* tree() const { return m_pTree; }

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override;

private:
    QPointer<QTreeWidget> m_pTree;
};
