#pragma once
// The inspector's "design" tab: edits the selected widget live. Geometry through x / y / width /
// height boxes and arrow buttons (1 px a click, 10 px with Shift), size policy through two combo
// boxes, contents margins of the widget and of its layout through spin boxes. Every change applies
// at once and can be undone (the undo button or Ctrl+Z inside the tab), newest first.
//
// Choices made here:
// - Undo keeps the last kMaxUndo changes. Each entry remembers the widget it was made on, so
//   changing the selection does not lose the history; entries of widgets that died are skipped.
// - Spin boxes apply on Enter, on focus loss or on a step of their arrows (not on every typed
//   digit), so one edit is one undo step.
// - A phantom item cannot be edited: it is drawn by its container. The tab says so and stays off.
// - A widget placed by a layout is moved back by that layout the next time it runs; the size policy
//   and the margins are the lasting way to change such a widget.

#include <LxUIKit/DevTools/Spy/LxUISpyComponent.h>

#include <QComboBox>
#include <QLabel>
#include <QMargins>
#include <QPointer>
#include <QPushButton>
#include <QSizePolicy>
#include <QSpinBox>
#include <QVector>
#include <QWidget>

#include <array>

class LxDesignerView : public QWidget, public ILxUISpyComponent {
    Q_OBJECT
public:
    static constexpr int kMaxUndo = 50;

    // One widget's editable state.
    struct Snapshot {
        QPointer<QWidget> widget;
        QRect geometry;
        QSizePolicy sizePolicy;
        QMargins contentsMargins;
        bool hasLayout = false;
        QMargins layoutMargins;
        static Snapshot Of(QWidget* w);
        void ApplyTo(QWidget* w) const;
    };

    explicit LxDesignerView(QWidget* parent);

    QWidget* target() const { return m_pTarget; }
    void SetTarget(const PseudoWidget& pw);

    // Moves and resizes the target by the given amounts (one undo step).
    void Nudge(int dx, int dy, int dw, int dh);
    // The step of an arrow button for the keyboard modifiers held: 10 with Shift, else 1.
    static int NudgeStep(Qt::KeyboardModifiers modifiers);
    void SetSizePolicy(QSizePolicy::Policy horizontal, QSizePolicy::Policy vertical);
    void SetContentsMargins(const QMargins& m);
    void SetLayoutMargins(const QMargins& m);
    // Puts back the state before the latest change still undoable; false when there is none.
    bool Undo();
    int undoCount() const { return m_undo.size(); }

    QSpinBox* geometryBox(int i) const { return m_geometry[size_t(i)]; }  // x, y, width, height
    QComboBox* horizontalPolicyBox() const { return m_pHPolicy; }
    QComboBox* verticalPolicyBox() const { return m_pVPolicy; }
    QPushButton* undoButton() const { return m_pUndo; }

protected:
    void OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) override { SetTarget(pw); }

private:
    // Records the target's state for undo, then runs the change and refreshes the fields.
    template <typename Change>
    void Apply(Change change);
    void Refresh();
    QWidget* ArrowButton(const QString& text, const QString& tip, int dx, int dy, int dw, int dh);
    QComboBox* PolicyBox();

    QPointer<QWidget> m_pTarget;
    QPointer<QLabel> m_pTitle;
    QPointer<QWidget> m_pEditor;
    std::array<QPointer<QSpinBox>, 4> m_geometry;
    std::array<QPointer<QSpinBox>, 4> m_margins;
    std::array<QPointer<QSpinBox>, 4> m_layoutMargins;
    QPointer<QComboBox> m_pHPolicy;
    QPointer<QComboBox> m_pVPolicy;
    QPointer<QLabel> m_pLayoutNote;
    QPointer<QPushButton> m_pUndo;
    QPointer<QObject> m_pWatcher;  // follows the target's moves and resizes
    QVector<Snapshot> m_undo;
};
