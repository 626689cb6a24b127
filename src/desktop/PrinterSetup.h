#pragma once

#include "printing/jobs/CupsPrinters.h"

#include <QDialog>

#include <functional>
#include <string>
#include <vector>

class QLabel;
class QListWidget;
class QPushButton;

namespace quillmere {

/// The printer dialog: the spooler's printers with what it tells of each. The one that is chosen becomes the default
/// printer until the program ends; how a printer is set up is the business of its own page in the spooler.
class PrinterSetup : public QDialog {
public:
    /// The first printer is the default one. `openPage` is asked to show the page of a printer.
    PrinterSetup(std::vector<PrinterFacts> printers, std::function<void(const std::string&)> openPage,
                 const QFont& letters, QWidget* parent);

    /// The chosen printer's name; empty if there are none.
    std::string Chosen() const;

private:
    void ShowFacts();

    std::vector<PrinterFacts> printers;
    QListWidget* list = nullptr;
    QLabel* facts = nullptr;
    QPushButton* properties = nullptr;
};

} // namespace quillmere
