#include <LxUIKit/DevTools/Log/LogFilterDialog.h>

#include <LxCore/FileSystem.h>
#include <LxCore/ProductPath.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QDataStream>
#include <QFile>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {
constexpr QDataStream::Version kStreamVersion = QDataStream::Qt_5_15;
}

CLogFilterDialog::CLogFilterDialog(QWidget* parent) : QDialog(parent) {
    setModal(true);
    setWindowTitle(QStringLiteral("常用过滤词"));
    m_pModel = new QStandardItemModel(this);
    m_pModel->setHorizontalHeaderLabels({QStringLiteral("常用过滤词，双击使用")});
    m_pView = new QTableView(this);
    m_pView->setModel(m_pModel);
    m_pView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pView->horizontalHeader()->setStretchLastSection(true);
    m_pView->verticalHeader()->hide();
    m_pView->setContextMenuPolicy(Qt::CustomContextMenu);
    m_pEdit = new QLineEdit(this);
    m_pEdit->setPlaceholderText(QStringLiteral("输入常用过滤词"));
    auto* add = new QPushButton(QStringLiteral("新增"), this);
    auto* del = new QPushButton(QStringLiteral("删除"), this);

    auto* row = new QHBoxLayout;
    row->addWidget(m_pEdit, 1);
    row->addWidget(add);
    row->addWidget(del);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pView, 1);
    layout->addLayout(row);
    resize(320, 360);

    LXUIKIT_SAFE_CONNECT(add, &QPushButton::clicked, this, &CLogFilterDialog::onAddClicked);
    LXUIKIT_SAFE_CONNECT(del, &QPushButton::clicked, this, &CLogFilterDialog::onDeleteClicked);
    LXUIKIT_SAFE_CONNECT(m_pEdit.data(), &QLineEdit::returnPressed, this, &CLogFilterDialog::onAddClicked);
    LXUIKIT_SAFE_CONNECT(m_pView.data(), &QTableView::doubleClicked, this, &CLogFilterDialog::onItemDoubleClicked);
    LXUIKIT_SAFE_CONNECT(m_pView.data(), &QWidget::customContextMenuRequested, this, [this](const QPoint& pos) {
        if (!m_pView->indexAt(pos).isValid())
            return;
        QMenu menu(this);
        menu.addAction(QStringLiteral("删除"), this, &CLogFilterDialog::onDeleteClicked);
        menu.exec(m_pView->viewport()->mapToGlobal(pos));
    });
    loadData();
}

QString CLogFilterDialog::DataFilePath() {
    return core::product_path::GetCommonDir() + QStringLiteral("/CommonFilter.dat");
}

bool CLogFilterDialog::ParseFilterWords(const QByteArray& data, QStringList* pWords) {
    pWords->clear();
    QDataStream in(data);
    in.setVersion(kStreamVersion);
    quint32 count = 0;
    in >> count;
    // Every string takes at least its 4-byte length: a count beyond that is damage, and reading
    // it item by item (never reserving) keeps a forged count from allocating anything.
    if (in.status() != QDataStream::Ok || count > quint32(data.size() / 4)) {
        LXUIKIT_LOG_WARN("common filter words: damaged stream (count {} in {} bytes)", count, data.size());
        return false;
    }
    QStringList words;
    for (quint32 i = 0; i < count; ++i) {
        QString word;
        in >> word;
        if (in.status() != QDataStream::Ok) {
            LXUIKIT_LOG_WARN("common filter words: stream cut or damaged at word {} of {}", i, count);
            return false;
        }
        words << word;
    }
    if (!in.atEnd())
        LXUIKIT_LOG_INFO("common filter words: {} bytes after the list ignored", data.size() - in.device()->pos());
    *pWords = words;
    return true;
}

QByteArray CLogFilterDialog::SerializeFilterWords(const QStringList& words) {
    QByteArray out;
    QDataStream stream(&out, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << words;
    return out;
}

QStringList CLogFilterDialog::Words() const {
    QStringList out;
    for (int i = 0; i < m_pModel->rowCount(); ++i)
        out << m_pModel->item(i)->text();
    return out;
}

void CLogFilterDialog::loadData() {
    m_pModel->removeRows(0, m_pModel->rowCount());
    QFile file(DataFilePath());
    if (!file.exists())
        return;
    if (!file.open(QIODevice::ReadOnly)) {
        LXUIKIT_LOG_WARN("common filter words: cannot read {}: {}", file.fileName(), file.errorString());
        return;
    }
    QStringList words;
    ParseFilterWords(file.readAll(), &words);
    for (const QString& w : qAsConst(words))
        m_pModel->appendRow(new QStandardItem(w));
}

void CLogFilterDialog::saveData() {
    // Replaced whole or not at all: a failed save (a full disk) keeps the previous list on disk.
    if (!core::fs::WriteFile(DataFilePath(), SerializeFilterWords(Words())))
        LXUIKIT_LOG_WARN("common filter words: not saved to {}; the file keeps its previous list", DataFilePath());
}

void CLogFilterDialog::onAddClicked() {
    const QString word = m_pEdit->text();
    if (word.isEmpty())
        return;
    m_pModel->appendRow(new QStandardItem(word));
    m_pEdit->clear();
    saveData();
}

void CLogFilterDialog::onDeleteClicked() {
    const QModelIndex current = m_pView->currentIndex();
    if (!current.isValid())
        return;
    m_pModel->removeRow(current.row());
    saveData();
}

void CLogFilterDialog::onItemDoubleClicked(const QModelIndex& index) {
    if (!index.isValid())
        return;
    emit itemSelected(m_pModel->data(index).toString());
}

QLineEdit* CLogFilterDialog::lineEdit() const { return m_pEdit; }
QTableView* CLogFilterDialog::view() const { return m_pView; }
