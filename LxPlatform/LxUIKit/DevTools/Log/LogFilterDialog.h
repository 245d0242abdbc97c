#pragma once
// CLogFilterDialog: the user's common filter words for the log viewer, kept across runs in
// "<common folder>/CommonFilter.dat". A double click on a word emits itemSelected(word), which the
// viewer puts into its filter box.
//
// The file is a Qt data stream holding one QStringList (a 32-bit count, then the strings), written
// with the Qt 5.15 stream format. A file that cannot be read, is cut short or is damaged gives an
// empty list and a log line; bytes after the list (a newer version's additions) are ignored.

#include <LxUIKit/LxUIKitExport.h>

#include <QDialog>
#include <QPointer>
#include <QStringList>

class QLineEdit;
class QStandardItemModel;
class QTableView;

class LXUIKIT_EXPORT CLogFilterDialog : public QDialog {
    Q_OBJECT
public:
    explicit CLogFilterDialog(QWidget* parent = nullptr);

    static QString DataFilePath();
    // Reads a filter-word stream; false (and an empty list) when it is damaged.
    static bool ParseFilterWords(const QByteArray& data, QStringList* pWords);
    static QByteArray SerializeFilterWords(const QStringList& words);

    QStringList Words() const;
    void loadData();
    void saveData();
    void onAddClicked();
    void onDeleteClicked();
    void onItemDoubleClicked(const QModelIndex& index);

    QLineEdit* lineEdit() const;
    QTableView* view() const;

Q_SIGNALS:
    void itemSelected(const QString& text);

private:
    QPointer<QTableView> m_pView;
    QPointer<QLineEdit> m_pEdit;
    QStandardItemModel* m_pModel = nullptr;
};
