#pragma once

#include "cars/ExtraCarsScreen.h"
#include "clientdb/Schedule.h"
#include "desktop/layouts/Layout.h"
#include "screens/ScheduleNotepad.h"

#include <span>
#include <string_view>

/// One function for each layout; Layouts.cpp has the list.
namespace quillmere::layouts {

Layout NewFileCheck();
Layout NewFile();
Layout EmployerList();
Layout EmployeeList();
Layout RenameEmp();
Layout FindEmployee();
Layout CheckList();
Layout CalculatorCheck();
Layout Explanation();
Layout HelpBook();
Layout About();
Layout LastYearSheet();
Layout OverviewList();
Layout ChangeHistory();
Layout ExportTable();
Layout ImportTable();
Layout SafetyCopies();
Layout ShareFolder();
Layout TypedStrip();
Layout TypedList();
Layout DamagedDatabase();
Layout frmFolderManager();
Layout frmBackup();
Layout TransferList();
Layout frmVSPrintSettings();
Layout frmVSPrint();
Layout frmVSPrintDialog();
Layout PrePrint();
Layout PdfFiles();
Layout LastBatch();
Layout Form3();
Layout Side2Form1();
Layout P11DDeclaration();
Layout FNotepad();
Layout Form1();
Layout GNotepad2();
Layout P11DBNotepad1();
Layout P11DBNotepad2();
Layout DNotepad();
Layout D2Notepad();
Layout D2InfoNotepad();
Layout ENotepad();
Layout GNotepad();
Layout HNotepad();
Layout HNotepad2();
Layout JNotepad();

/// A screen for two further cars.
Layout ExtraCarsScreen(const ExtraCars& which);
/// A schedule notepad of the pages.
Layout ScheduleNotepad(const NotepadMember& member);
/// The window of any schedule: a heading, twenty lines under their captions, the totals, and the buttons in a row.
Layout ScheduleWindow(std::string_view heading, std::span<const ScheduleColumn> columns,
                      std::span<const std::string_view> buttons);

} // namespace quillmere::layouts
