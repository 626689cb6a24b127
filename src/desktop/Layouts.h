#pragma once

#include "desktop/Layout.h"

/// One function for each layout; Layouts.cpp has the list.
namespace quillmere::layouts {

Layout NewFileCheck();
Layout NewFile();
Layout EmployerList();
Layout EmployeeList();
Layout RenameEmp();
Layout frmFolderManager();
Layout frmBackup();
Layout TransferList();
Layout Form3();
Layout P11DDeclaration();
Layout P11DBNotepad1();
Layout P11DBNotepad2();

/// The fixed strip above a page, with its two tabs on the left.
void PageHeader(Layout& layout);

} // namespace quillmere::layouts
