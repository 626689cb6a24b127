#include "desktop/ListHands.h"

#include "desktop/BoxWidgets.h"
#include "desktop/Look.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

#include <algorithm>
#include <array>
#include <utility>

namespace quillmere {

namespace {

constexpr auto Modifiers = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool Is(const QKeyEvent& key, int which, Qt::KeyboardModifiers with)
{
    return key.key() == which && (key.modifiers() & Modifiers) == with;
}

bool IsModifier(const QKeyEvent& key)
{
    return key.key() == Qt::Key_Shift || key.key() == Qt::Key_Control || key.key() == Qt::Key_Alt ||
           key.key() == Qt::Key_Meta || key.key() == Qt::Key_AltGr;
}

/// Where an arrow key leads among cells.
struct Step {
    int key, columns, lines;
};
constexpr auto Steps =
    std::to_array<Step>({{Qt::Key_Up, 0, -1}, {Qt::Key_Down, 0, 1}, {Qt::Key_Left, -1, 0}, {Qt::Key_Right, 1, 0}});

} // namespace

ListHands::ListHands(Screen& screen, std::function<QWidget*(const Box&)> widgetOf)
    : screen(screen), widgetOf(std::move(widgetOf))
{
}

void ListHands::FocusIn(Box& box, Qt::FocusReason reason)
{
    const bool extends = reason == Qt::MouseFocusReason && anchor != nullptr && screen.IsInList(box) &&
                         QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    if (extends) {
        Choose(*anchor, box);
        return;
    }
    ChooseNone();
    anchor = screen.IsInList(box) ? &box : nullptr;
}

bool ListHands::Key(Box& box, const QKeyEvent& key)
{
    if (!screen.IsInList(box) || IsModifier(key))
        return false;
    if (CellKey(box, key))
        return true;
    ChooseNone();
    return LineKey(box, key);
}

/// Keys that choose cells, or do something with those that are chosen.
bool ListHands::CellKey(Box& box, const QKeyEvent& key)
{
    const auto step = std::ranges::find_if(Steps, [&](const Step& one) { return Is(key, one.key, Qt::ShiftModifier); });
    if (step != Steps.end() && (AreSeveralChosen() || step->lines != 0)) {
        const BoxList& list = *screen.List();
        const Box& from = end == nullptr ? box : *end;
        const auto lastColumn = static_cast<int>(list.columns.size()) - 1;
        const int column = std::clamp(static_cast<int>(list.ColumnOf(from)) + step->columns, 0, lastColumn);
        const int line = std::clamp(from.Index() + step->lines, list.first, list.last);
        Choose(anchor == nullptr ? box : *anchor, screen.box(list.columns[static_cast<std::size_t>(column)], line));
        return true;
    }
    if (!AreSeveralChosen())
        return false;
    if (key.matches(QKeySequence::Copy)) {
        screen.UseList(box, [&] {
            QGuiApplication::clipboard()->setText(look::Text(CellsAsText(screen, Chosen(box))));
            return InWords(Chosen(box)) + " copied";
        });
        return true;
    }
    const bool wholeLines = Is(key, Qt::Key_Delete, Qt::ControlModifier);
    if (!wholeLines && !Is(key, Qt::Key_Delete, Qt::NoModifier))
        return false;
    CellRange cells = Chosen(box);
    if (wholeLines)
        cells = {.left = 0, .right = screen.List()->columns.size() - 1, .top = cells.top, .bottom = cells.bottom};
    screen.UseList(box, [&] { return EmptyCells(screen, cells); });
    return true;
}

/// Keys for the line of the box.
bool ListHands::LineKey(Box& box, const QKeyEvent& key)
{
    const int line = box.Index();
    if (Is(key, Qt::Key_D, Qt::ControlModifier)) {
        screen.UseList(box, [&] { return RepeatLineAbove(screen, line); });
        return true;
    }
    if (Is(key, Qt::Key_Delete, Qt::ControlModifier)) {
        const CellRange cells{.left = 0, .right = screen.List()->columns.size() - 1, .top = line, .bottom = line};
        screen.UseList(box, [&] { return EmptyCells(screen, cells); });
        return true;
    }
    const int by = Is(key, Qt::Key_Up, Qt::AltModifier) ? -1 : Is(key, Qt::Key_Down, Qt::AltModifier) ? 1 : 0;
    if (by == 0)
        return false;
    MovedLine outcome;
    screen.UseList(box, [&] {
        outcome = MoveLine(screen, line, by);
        return outcome.words;
    });
    if (outcome.moved)
        screen.Focus(screen.box(box.Name(), line + by));
    return true;
}

void ListHands::Press(Qt::KeyboardModifiers with)
{
    if (!with.testFlag(Qt::ShiftModifier))
        ChooseNone();
}

void ListHands::Drag(Box& box, const QPoint& globalPlace)
{
    if (!screen.IsInList(box))
        return;
    const auto isThere = [&](const auto& other) {
        const QWidget* widget = screen.IsInList(*other) ? widgetOf(*other) : nullptr;
        return widget != nullptr && widget->rect().contains(widget->mapFromGlobal(globalPlace));
    };
    const auto over = std::ranges::find_if(screen.Boxes(), isThere);
    if (over == screen.Boxes().end() || (over->get() == &box && !AreSeveralChosen()))
        return;
    if (BoxEdit* edit = EditOf(box))
        edit->deselect();
    Choose(box, **over);
}

/// The edit may have cut a long text off, and put it together with what stood there; the clipboard has it whole.
bool ListHands::Paste(Box& box, BoxEdit& edit)
{
    const QString now = edit.text();
    const auto isBreak = [](QChar character) { return character == u'\t' || character == u'\n' || character == u'\r'; };
    if (!screen.IsInList(box) || std::ranges::none_of(now, isBreak))
        return false;
    const QClipboard* clipboard = QGuiApplication::clipboard();
    std::string cells;
    for (const auto mode : {QClipboard::Clipboard, QClipboard::Selection}) {
        const QString text = clipboard->text(mode);
        if (cells.empty() && !text.isEmpty() && now.contains(text.left(edit.maxLength() - now.size())))
            cells = text.toStdString();
    }
    if (cells.empty())
        cells = now.toStdString(); // dropped here
    if (!IsOfSeveralCells(cells))
        return false;
    edit.setText(look::Text(box.Text()));
    screen.UseList(box, [&] { return PasteCells(screen, box, cells); });
    return true;
}

CellRange ListHands::Chosen(const Box& box) const
{
    return AreSeveralChosen() ? screen.List()->Between(*anchor, *end) : screen.List()->Between(box, box);
}

void ListHands::Choose(Box& from, const Box& to)
{
    if (anchor == &from && end == &to)
        return;
    ChooseNone();
    anchor = &from;
    end = &to;
    if (!AreSeveralChosen())
        return;
    Mark(Chosen(from), true);
    screen.UseList(from, [&] { return InWords(Chosen(from)) + " chosen"; });
}

void ListHands::ChooseNone()
{
    if (AreSeveralChosen())
        Mark(Chosen(*anchor), false);
    end = nullptr;
}

void ListHands::Mark(const CellRange& cells, bool chosen) const
{
    for (int line = cells.top; line <= cells.bottom; ++line)
        for (std::size_t column = cells.left; column <= cells.right; ++column)
            if (BoxEdit* edit = EditOf(screen.box(screen.List()->columns[column], line)))
                edit->SetChosen(chosen);
}

BoxEdit* ListHands::EditOf(const Box& box) const
{
    return dynamic_cast<BoxEdit*>(widgetOf(box));
}

} // namespace quillmere
