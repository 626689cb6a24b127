#pragma once

#include "desktop/layouts/Layout.h"
#include "frame/Box.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QString>

class QPainter;

namespace quillmere::look {

/// The built-in face of captions, and the monospaced one of amounts, at a size in pixels. A window asks for them before
/// it is painted.
QFont CaptionFont(const TextLook& look = {});
QFont AmountFont(int size = 13);

inline const QColor Sheet(0xFF, 0xFF, 0xFF);
inline const QColor Ground(0xF7, 0xF8, 0xFA); ///< of every window
inline const QColor PanelGrey(0xE9, 0xEB, 0xEE);
inline const QColor Ink(0x1A, 0x1A, 0x1A);
inline const QColor Faint(0x5A, 0x61, 0x6A); ///< what cannot be used just now
inline const QColor Desk(0xC9, 0xCE, 0xD4);
inline const QColor DeskInk(0x3C, 0x43, 0x4C);
inline const QColor Computed(0xE2, 0xE6, 0xDC); ///< behind what is not typed in
inline const QColor Yellow(0xFF, 0xFF, 0x00);   ///< the current tab

/// The colours of every widget, message box and dialog, whatever the desktop's own are.
const QPalette& WholePalette();

/// Gives the program its look: one style, its own colours, dialogs that have them, and the picture on its windows.
void Dress();

/// Palette of a text box by whether it can be typed in.
const QPalette& EditPalette(bool writable);

/// Palette of a label that shows a figure.
const QPalette& FigurePalette();

/// Draws one thing of a layout.
void Draw(QPainter& painter, const Layout::Drawn& drawn);

/// The picture of a toolbar or notepad button.
QIcon Picture(const std::string& name);

inline QString Text(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace quillmere::look
