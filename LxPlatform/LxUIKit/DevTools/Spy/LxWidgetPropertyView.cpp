#include <LxUIKit/DevTools/Spy/LxWidgetPropertyView_p.h>

#include <LxUIKit/DevTools/Spy/LxDebugVariableParser_p.h>
#include <LxUIKit/DevTools/Spy/LxSpyEntry.h>
#include <LxUIKit/LxUIKitLog_p.h>

#include <QHeaderView>
#include <QLabel>
#include <QMetaProperty>
#include <QSplitter>
#include <QTableWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

LxWidgetPropertyView::LxWidgetPropertyView(QWidget* parent) : QWidget(parent) {
    m_pTitle = new QLabel(this);
    m_pTitle->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pTable = new QTableWidget(0, 2, this);
    m_pTable->setHorizontalHeaderLabels({QStringLiteral("Property"), QStringLiteral("Value")});
    m_pTable->horizontalHeader()->setStretchLastSection(true);
    m_pTable->verticalHeader()->hide();
    m_pStatus = new QLabel(this);
    m_pStatus->setObjectName(QStringLiteral("SpyPropertyStatus"));
    m_pStatus->setWordWrap(true);
    m_pStyle = new QTextBrowser(this);
    auto* split = new QSplitter(Qt::Vertical, this);
    split->addWidget(m_pTable);
    split->addWidget(m_pStyle);
    split->setStretchFactor(0, 3);
    split->setStretchFactor(1, 1);
    auto* v = new QVBoxLayout(this);
    v->setContentsMargins(0, 0, 0, 0);
    v->addWidget(m_pTitle);
    v->addWidget(split, 1);
    v->addWidget(m_pStatus);
    LXUIKIT_SAFE_CONNECT(m_pTable.data(), &QTableWidget::itemChanged, this, &LxWidgetPropertyView::OnItemChanged);
    Fill(SelectedPseudoWidget());
}

void LxWidgetPropertyView::AddRow(const QString& name, const QString& value, bool editable) {
    const int row = m_pTable->rowCount();
    m_pTable->insertRow(row);
    auto* key = new QTableWidgetItem(name);
    key->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    auto* val = new QTableWidgetItem(value);
    val->setFlags(editable ? (Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable)
                           : (Qt::ItemIsEnabled | Qt::ItemIsSelectable));
    if (!editable)
        val->setForeground(QColor(0x80, 0x80, 0x80));
    m_pTable->setItem(row, 0, key);
    m_pTable->setItem(row, 1, val);
}

void LxWidgetPropertyView::Fill(const PseudoWidget& pw) {
    const QSignalBlocker block(m_pTable.data());
    m_current = pw;
    m_pTable->setRowCount(0);
    m_pStatus->clear();
    if (!pw.isValid()) {
        m_pTitle->setText(QStringLiteral("Nothing selected"));
        m_pStyle->clear();
        return;
    }
    m_pTitle->setText(
        QStringLiteral("<b>%1</b> %2").arg(pw.className().toHtmlEscaped(), pw.objectName().toHtmlEscaped()));
    if (pw.isPhantom()) {
        const QRect r = pw.geometry();
        AddRow(QStringLiteral("text"), pw.text(), false);
        AddRow(QStringLiteral("class"), pw.className(), false);
        AddRow(QStringLiteral("rect"), devtools::spy::DebugVariableText(QVariant(r)), false);
        QWidget* c = pw.phantomContainer();
        AddRow(QStringLiteral("container"),
               QStringLiteral("%1#%2").arg(QLatin1String(c->metaObject()->className()), c->objectName()), false);
        if (QObject* o = pw.phantomObject())
            AddRow(QStringLiteral("object"), QLatin1String(o->metaObject()->className()), false);
        if (const auto props = pw.phantomProperties()) {
            for (auto it = props->cbegin(); it != props->cend(); ++it)
                AddRow(it.key(), devtools::spy::DebugVariableText(it.value()), false);
        }
    } else if (QObject* o = pw.object()) {
        const QMetaObject* mo = o->metaObject();
        for (int i = 0; i < mo->propertyCount(); ++i) {
            const QMetaProperty p = mo->property(i);
            const QMetaEnum e = p.isEnumType() ? p.enumerator() : QMetaEnum();
            AddRow(QLatin1String(p.name()), devtools::spy::DebugVariableText(p.read(o), e), p.isWritable());
        }
        const auto dynamicNames = o->dynamicPropertyNames();
        for (const QByteArray& name : dynamicNames)
            AddRow(QString::fromLatin1(name), devtools::spy::DebugVariableText(o->property(name.constData())), true);
    }
    m_pStyle->setHtml(devtools::spy::DumpObjectStyleSheetDebugHtmlText(pw.widgetOrPhantomContainer()));
}

void LxWidgetPropertyView::OnItemChanged(QTableWidgetItem* item) {
    QObject* o = m_current.object();
    if (!o || !item || item->column() != 1)
        return;
    const QByteArray name = m_pTable->item(item->row(), 0)->text().toLatin1();
    const QMetaObject* mo = o->metaObject();
    const int index = mo->indexOfProperty(name.constData());
    QVariant value;
    QString error;
    bool ok = false;
    if (index >= 0) {
        const QMetaProperty p = mo->property(index);
        const QMetaEnum e = p.isEnumType() ? p.enumerator() : QMetaEnum();
        ok = devtools::spy::ParseDebugVariable(item->text(), p.userType(), &value, &error, e) && p.write(o, value);
        if (!ok && error.isEmpty())
            error = QStringLiteral("the object refused the value");
    } else {
        // A dynamic property keeps its current type.
        const QVariant current = o->property(name.constData());
        ok = devtools::spy::ParseDebugVariable(item->text(), current.userType(), &value, &error);
        if (ok)
            o->setProperty(name.constData(), value);
    }
    const QSignalBlocker block(m_pTable.data());
    const QMetaEnum e = index >= 0 && mo->property(index).isEnumType() ? mo->property(index).enumerator() : QMetaEnum();
    item->setText(devtools::spy::DebugVariableText(o->property(name.constData()), e));
    m_pStatus->setText(ok ? QStringLiteral("%1 set.").arg(QString::fromLatin1(name))
                          : QStringLiteral("Cannot set %1: %2").arg(QString::fromLatin1(name), error));
    if (!ok)
        LXUIKIT_LOG_INFO("inspector: cannot set property {}: {}", name.toStdString(), error.toStdString());
}
