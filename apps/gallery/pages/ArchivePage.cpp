// Archive: pack a folder into a zip, unpack an archive, and show what the archive holds and what
// the unpacking wrote. A sample folder (with a hidden file and an empty folder) is made on first
// use so the page works offline out of the box.

#include "GalleryPages.h"

#include <LxCore/ProductPath.h>
#include <LxCore/SafeQtConnect.h>
#include <LxStdUI/FontToken.h>
#include <LxStdUI/MultiLang.h>
#include <LxUIKit/LxGuiHelper.h>
#include <LxUIKit/Zip/LxZip.h>

#include <QtGui/private/qzipreader_p.h>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QString SampleRoot() { return core::product_path::GetCacheDir() + QStringLiteral("/gallery_archive"); }

QString EnsureSampleFolder() {
    const QString dir = SampleRoot() + QStringLiteral("/report");
    auto write = [&](const QString& rel, const QByteArray& data) {
        QDir().mkpath(QFileInfo(dir + QLatin1Char('/') + rel).absolutePath());
        QFile f(dir + QLatin1Char('/') + rel);
        if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            f.write(data);
    };
    if (!QFileInfo::exists(dir)) {
        write(QStringLiteral("readme.txt"), "Diagnostics package made by the gallery.\n");
        write(QStringLiteral(".settings"), "theme=dark\nlang=zh_CN\n");
        write(QStringLiteral("logs/client.log"),
              QByteArray("2026-11-21 09:30:00 [INFO] session started\n").repeated(200));
        write(QStringLiteral("data/quotes.csv"), "symbol,price\nHRBR,189.2\nTNVR,312.4\n");
        QDir().mkpath(dir + QStringLiteral("/logs/empty"));
    }
    return dir;
}

QString Permissions(QFile::Permissions p) {
    QString s;
    s += p & QFile::ReadOwner ? 'r' : '-';
    s += p & QFile::WriteOwner ? 'w' : '-';
    s += p & QFile::ExeOwner ? 'x' : '-';
    s += p & QFile::ReadGroup ? 'r' : '-';
    s += p & QFile::WriteGroup ? 'w' : '-';
    s += p & QFile::ExeGroup ? 'x' : '-';
    s += p & QFile::ReadOther ? 'r' : '-';
    s += p & QFile::WriteOther ? 'w' : '-';
    s += p & QFile::ExeOther ? 'x' : '-';
    return s;
}

class ArchivePage : public QWidget {
    Q_DECLARE_TR_FUNCTIONS(ArchivePage)

public:
    explicit ArchivePage(QWidget* parent) : QWidget(parent) {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(24, 20, 24, 20);
        layout->setSpacing(10);
        auto* title = new QLabel(tr("Archive"), this);
        title->setFont(LFontTokenLoader::font(QStringLiteral("BigTitle2")));
        auto* hint = new QLabel(tr("Pack a folder (hidden files included, links left out) and unpack an "
                                   "archive. Unpacking refuses archives whose entries would leave the "
                                   "destination."),
                                this);
        hint->setProperty("role", QStringLiteral("hint"));
        hint->setWordWrap(true);
        layout->addWidget(title);
        layout->addWidget(hint);

        auto* form = new QGridLayout;
        m_pSource = AddRow(form, 0, tr("Folder to pack"), EnsureSampleFolder(), true);
        m_pZip = AddRow(form, 1, tr("Archive file"), SampleRoot() + QStringLiteral("/report.zip"), false);
        m_pDest = AddRow(form, 2, tr("Unpack into"), SampleRoot() + QStringLiteral("/unpacked"), true);
        layout->addLayout(form);

        auto* buttons = new QHBoxLayout;
        auto* pack = new QPushButton(tr("Pack folder"), this);
        pack->setObjectName(QStringLiteral("ArchivePack"));
        auto* unpack = new QPushButton(tr("Unpack archive"), this);
        unpack->setObjectName(QStringLiteral("ArchiveUnpack"));
        m_pStatus = new QLabel(this);
        m_pStatus->setObjectName(QStringLiteral("ArchiveStatus"));
        m_pStatus->setWordWrap(true);
        buttons->addWidget(pack);
        buttons->addWidget(unpack);
        buttons->addWidget(m_pStatus, 1);
        layout->addLayout(buttons);

        auto* lists = new QHBoxLayout;
        auto* entriesBox = new QGroupBox(tr("Entries in the archive"), this);
        auto* eb = new QVBoxLayout(entriesBox);
        m_pEntries = new QTreeWidget(entriesBox);
        m_pEntries->setObjectName(QStringLiteral("ArchiveEntries"));
        m_pEntries->setHeaderLabels({tr("Entry"), tr("Size"), tr("Mode"), tr("Modified")});
        m_pEntries->setRootIsDecorated(false);
        m_pEntries->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        eb->addWidget(m_pEntries);
        auto* filesBox = new QGroupBox(tr("Files written by unpacking"), this);
        auto* fb = new QVBoxLayout(filesBox);
        m_pFiles = new QTreeWidget(filesBox);
        m_pFiles->setObjectName(QStringLiteral("ArchiveFiles"));
        m_pFiles->setHeaderLabels({tr("File"), tr("Size")});
        m_pFiles->setRootIsDecorated(false);
        m_pFiles->header()->setSectionResizeMode(0, QHeaderView::Stretch);
        fb->addWidget(m_pFiles);
        lists->addWidget(entriesBox, 3);
        lists->addWidget(filesBox, 2);
        layout->addLayout(lists, 1);

        LX_SAFE_CONNECT_IN("Gallery", pack, &QPushButton::clicked, this, [this] { Pack(); });
        LX_SAFE_CONNECT_IN("Gallery", unpack, &QPushButton::clicked, this, [this] { Unpack(); });
    }

    void Pack() {
        const bool ok = _zip::CompressDir(m_pSource->text(), m_pZip->text());
        ShowResult(ok, ok ? tr("Packed %1 into %2").arg(m_pSource->text(), m_pZip->text())
                          : tr("Packing failed; the log says why"));
        ListEntries();
    }

    void Unpack() {
        QDir(m_pDest->text()).removeRecursively();
        const bool ok = _zip::ExtractDir(m_pZip->text(), m_pDest->text());
        ShowResult(
            ok, ok ? tr("Unpacked into %1").arg(m_pDest->text()) : tr("Unpacking refused or failed; the log says why"));
        ListEntries();
        ListFiles();
    }

private:
    QLineEdit* AddRow(QGridLayout* grid, int row, const QString& label, const QString& value, bool folder) {
        auto* edit = new QLineEdit(value, this);
        auto* browse = new QPushButton(tr("Browse…"), this);
        grid->addWidget(new QLabel(label, this), row, 0);
        grid->addWidget(edit, row, 1);
        grid->addWidget(browse, row, 2);
        LX_SAFE_CONNECT_IN("Gallery", browse, &QPushButton::clicked, this, [this, edit, folder] {
            const QString chosen =
                folder ? QFileDialog::getExistingDirectory(this, QString(), edit->text())
                       : QFileDialog::getSaveFileName(this, QString(), edit->text(), tr("Zip archives (*.zip)"),
                                                      nullptr, QFileDialog::DontConfirmOverwrite);
            if (!chosen.isEmpty())
                edit->setText(chosen);
        });
        return edit;
    }

    void ShowResult(bool ok, const QString& text) {
        m_pStatus->setText(text);
        m_pStatus->setStyleSheet(ok ? QStringLiteral("color:#28a745;") : QStringLiteral("color:#dc3545;"));
        gui::ShowSimpleToast(ok ? lxstdui_multi_lang::zip_helper::textArchiveDone()
                                : lxstdui_multi_lang::zip_helper::textArchiveFailed(),
                             ok ? TriBool::True : TriBool::False, 1000);
    }

    void ListEntries() {
        m_pEntries->clear();
        QZipReader reader(m_pZip->text());
        if (!reader.exists())
            return;
        for (const QZipReader::FileInfo& e : reader.fileInfoList()) {
            auto* item = new QTreeWidgetItem(m_pEntries);
            item->setText(0, e.filePath);
            item->setText(1, e.isDir ? tr("folder") : QString::number(e.size));
            item->setText(2, Permissions(e.permissions));
            item->setText(3, e.lastModified.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
        }
    }

    void ListFiles() {
        m_pFiles->clear();
        const QDir root(m_pDest->text());
        QDirIterator it(m_pDest->text(), QDir::Files | QDir::Hidden | QDir::Dirs | QDir::NoDotAndDotDot,
                        QDirIterator::Subdirectories);
        QStringList rows;
        while (it.hasNext()) {
            it.next();
            rows << root.relativeFilePath(it.filePath()) + QLatin1Char('\t') +
                        (it.fileInfo().isDir() ? tr("folder") : QString::number(it.fileInfo().size()));
        }
        rows.sort();
        for (const QString& r : rows) {
            auto* item = new QTreeWidgetItem(m_pFiles);
            item->setText(0, r.section(QLatin1Char('\t'), 0, 0));
            item->setText(1, r.section(QLatin1Char('\t'), 1, 1));
        }
    }

    QLineEdit* m_pSource = nullptr;
    QLineEdit* m_pZip = nullptr;
    QLineEdit* m_pDest = nullptr;
    QLabel* m_pStatus = nullptr;
    QTreeWidget* m_pEntries = nullptr;
    QTreeWidget* m_pFiles = nullptr;
};

}  // namespace

QWidget* CreateArchivePage(QWidget* parent) { return new ArchivePage(parent); }

void DemoArchivePage(QWidget* page) {
    if (auto* p = dynamic_cast<ArchivePage*>(page)) {
        p->Pack();
        p->Unpack();
    }
}
