#include "desktop/PrinterSetup.h"

#include "desktop/Look.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace quillmere {

namespace {

QString StateOf(const PrinterFacts& printer)
{
    if (!printer.isAccepting)
        return QStringLiteral("takes no jobs");
    switch (printer.state) {
    case PrinterFacts::State::Printing:
        return QStringLiteral("printing");
    case PrinterFacts::State::Stopped:
        return QStringLiteral("stopped");
    case PrinterFacts::State::Idle:
        break;
    }
    return QStringLiteral("ready");
}

} // namespace

PrinterSetup::PrinterSetup(std::vector<PrinterFacts> known, std::function<void(const std::string&)> openPage,
                           const QFont& letters, QWidget* parent)
    : QDialog(parent), printers(std::move(known))
{
    setWindowTitle(QStringLiteral("Print Setup"));
    setFont(letters);
    resize(QSize(460, 360) * letters.pixelSize() / 13);
    list = new QListWidget(this);
    list->setAccessibleName(QStringLiteral("Printers"));
    for (const PrinterFacts& printer : printers)
        list->addItem(look::Text(printer.name));
    facts = new QLabel(this);
    facts->setTextFormat(Qt::PlainText);
    facts->setMinimumHeight(4 * facts->sizeHint().height());
    facts->setAlignment(Qt::AlignTop);
    auto* heading = new QLabel(QStringLiteral("Default printer until the program ends:"), this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    properties = buttons->addButton(QStringLiteral("P&roperties..."), QDialogButtonBox::ActionRole);
    properties->setToolTip(QStringLiteral("Opens the printer's page in the print spooler"));
    auto* column = new QVBoxLayout(this);
    for (QWidget* widget : {static_cast<QWidget*>(heading), static_cast<QWidget*>(list), static_cast<QWidget*>(facts),
                            static_cast<QWidget*>(buttons)})
        column->addWidget(widget);

    connect(list, &QListWidget::currentRowChanged, this, [this] { ShowFacts(); });
    connect(list, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(properties, &QPushButton::clicked, this, [this, open = std::move(openPage)] { open(Chosen()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->button(QDialogButtonBox::Ok)->setEnabled(!printers.empty());
    properties->setEnabled(!printers.empty());
    list->setCurrentRow(printers.empty() ? -1 : 0);
    ShowFacts();
}

std::string PrinterSetup::Chosen() const
{
    const int row = list->currentRow();
    return row < 0 ? std::string() : printers[static_cast<std::size_t>(row)].name;
}

void PrinterSetup::ShowFacts()
{
    const int row = list->currentRow();
    if (row < 0) {
        facts->setText(QStringLiteral("There is no printer available"));
        return;
    }
    const PrinterFacts& printer = printers[static_cast<std::size_t>(row)];
    facts->setText(QStringLiteral("Description: %1\nModel: %2\nLocation: %3\nState: %4")
                       .arg(look::Text(printer.description), look::Text(printer.model), look::Text(printer.location),
                            StateOf(printer)));
}

} // namespace quillmere
