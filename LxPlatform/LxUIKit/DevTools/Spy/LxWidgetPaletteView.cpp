#include <LxUIKit/DevTools/Spy/LxWidgetPaletteView_p.h>

#include <QHeaderView>
#include <QMetaEnum>
#include <QPalette>
#include <QPixmap>
#include <QTableWidget>
#include <QVBoxLayout>

LxWidgetPaletteView::LxWidgetPaletteView(QWidget* parent) : QWidget(parent) {
    m_pTable = new QTableWidget(0, 4, this);
    m_pTable->setHorizontalHeaderLabels(
        {QStringLiteral("Role"), QStringLiteral("Active"), QStringLiteral("Inactive"), QStringLiteral("Disabled")});
    m_pTable->verticalHeader()->hide();
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->horizontalHeader()->setStretchLastSection(true);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(m_pTable);
    OnSelectedPseudoWidgetChanged(SelectedPseudoWidget(), false);
}

void LxWidgetPaletteView::OnSelectedPseudoWidgetChanged(const PseudoWidget& pw, bool) {
    m_pTable->setRowCount(0);
    QWidget* w = pw.widgetOrPhantomContainer();
    if (!w)
        return;
    const QPalette pal = w->palette();
    const QMetaEnum roles = QMetaEnum::fromType<QPalette::ColorRole>();
    for (int role = 0; role < QPalette::NColorRoles; ++role) {
        const char* key = roles.valueToKey(role);
        if (!key || role == QPalette::NoRole)
            continue;
        const int row = m_pTable->rowCount();
        m_pTable->insertRow(row);
        m_pTable->setItem(row, 0, new QTableWidgetItem(QLatin1String(key)));
        int col = 1;
        for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QColor& c = pal.color(g, QPalette::ColorRole(role));
            QPixmap swatch(14, 14);
            swatch.fill(c);
            auto* item =
                new QTableWidgetItem(QIcon(swatch), c.name(c.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb));
            item->setData(Qt::UserRole, c);
            m_pTable->setItem(row, col++, item);
        }
    }
    m_pTable->resizeColumnsToContents();
}
