#pragma once
// A live log of the selected object's events (a phantom's container): time, event type and the
// facts that matter for input, geometry and show/hide events. The log keeps the latest kMaxLines
// lines. The filter keeps only event types whose name contains one of its comma-separated words
// (empty: all). The inspector's own widgets are not watched, since logging their events would make
// more of them.
#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QCheckBox>
#include <QEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QWidget>

class LxObjectEventView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    static constexpr int kMaxLines = 500;
    explicit LxObjectEventView(QWidget* parent);
    ~LxObjectEventView() override;
    bool eventFilter(QObject* obj, QEvent* ev) override;
    QObject* watched() const { return m_pWatched; }
    QPlainTextEdit* log() const { return m_pLog; }
    QLineEdit* filterEdit() const { return m_pFilter; }
    // The text logged for an event, or empty when the filter drops it.
    static QString Describe(const QEvent* ev);
    static bool PassesFilter(const QString& filter, QEvent::Type type);

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override;

private:
    void Watch(QObject* obj);

    QPointer<QObject> m_pWatched;
    QPointer<QLineEdit> m_pFilter;
    QPointer<QCheckBox> m_pPause;
    QPointer<QPlainTextEdit> m_pLog;
};
