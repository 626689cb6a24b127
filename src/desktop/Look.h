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

/// The colours of what is painted here, for which the toolkit's palette has no place.
struct Tones {
    QColor ground;            ///< of every window
    QColor panel;             ///< of a section
    QColor sheet;             ///< behind what is typed in
    QColor workedOut;         ///< behind a figure that is worked out and may be typed over
    QColor computed;          ///< behind what is not typed in
    QColor ink, faint;        ///< words, and those of what cannot be used just now
    QColor frame;             ///< the line round a group
    QColor letter, letterInk; ///< a section's letter, a box's number
    QColor desk, deskInk;     ///< what lies behind the pages
    QColor fault;             ///< under what will not print
    QColor mark;              ///< on a control of which there is something to tell
};

enum class Shade { Light, Dark };

/// The shade of the program's windows, which is that of the desktop.
Shade ShadeInUse();
const Tones& TonesOf(Shade shade);
inline const Tones& TonesInUse()
{
    return TonesOf(ShadeInUse());
}

inline const QColor Yellow(0xFF, 0xFF, 0x00); ///< the current tab, in either shade

/// The colours of every widget, message box and dialog: complete, so that none of the desktop's own comes between.
const QPalette& WholePalette(Shade shade);

/// Gives the program its look: one style, its own colours in the desktop's shade, dialogs that have them, and the
/// picture on its windows.
void Dress();

/// The ground of a table's line by the word in its first cell; none where the word has no colour. Words stand on it in
/// the colour that they have on any other.
QColor TintOf(const QString& word);

/// What goes into a text box.
enum class Entry {
    Typed,
    WorkedOut, ///< a figure of a rule, which may be typed over
    Closed,
};
/// Palette of a text box.
const QPalette& EditPalette(Entry entry);

/// Palette of a label that shows a figure.
QPalette FigurePalette();

/// Palette of a button, which may be painted.
QPalette ButtonPalette(Paint paint);

/// Draws the mark of a control of which there is something to tell: a dot in its upper right corner.
void DrawDot(QPainter& painter, const QRect& control);
/// The same on the edit of a figure, which stands on the right: the upper left corner.
void DrawCorner(QPainter& painter, const QRect& edit);

/// Draws one thing of a layout.
void Draw(QPainter& painter, const Layout::Drawn& drawn);

/// The picture of a toolbar or notepad button.
QIcon Picture(const std::string& name);

/// A caption with the letter marked that presses it, where it has that letter and marks none of its own.
QString Marked(const std::string& caption, char letter);

/// The tooltip of a control, with the letter that presses it where its caption cannot show it.
QString TipOf(const Box& box);

inline QString Text(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace quillmere::look
