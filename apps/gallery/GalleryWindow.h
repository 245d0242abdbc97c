#pragma once
// The gallery's main window: a page list on the left, the page on the right, and a bar with the
// Light/Dark switch, the language switch and a "Demo" button for the current page. A language
// change retranslates the bar and the list in place and makes the pages again (see RebuildPages).

#include <QMainWindow>
#include <QPointer>

#include <map>

class QComboBox;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QLabel;

class GalleryWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit GalleryWindow(QWidget* parent = nullptr);

    // Selects a page by name; false when there is none.
    bool OpenPage(const QString& name);
    QString CurrentPageName() const;
    // The page widget, created on demand.
    QWidget* PageWidget(const QString& name);
    void RunDemo();

protected:
    void changeEvent(QEvent* e) override;

private:
    void ApplyTheme();
    void SyncSwitches();
    void Retranslate();
    void RebuildPages();

    QPointer<QListWidget> m_pList;
    QPointer<QStackedWidget> m_pStack;
    QPointer<QComboBox> m_pTheme;
    QPointer<QComboBox> m_pLang;
    QPointer<QLabel> m_pTitle;
    QPointer<QLabel> m_pThemeLabel;
    QPointer<QLabel> m_pLangLabel;
    QPointer<QPushButton> m_pDemo;
    std::map<QString, QPointer<QWidget>> m_mapPages;
};
