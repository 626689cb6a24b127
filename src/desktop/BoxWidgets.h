#pragma once

#include "desktop/Look.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QToolButton>

#include <cstddef>
#include <functional>
#include <utility>

namespace quillmere {

/// How many blanks stand in front of a figure.
int BlanksAtStart(const QString& text);

/// The edit of a text box. A figure (an amount, a date, a count) is replaced more often than mended: whichever way the
/// focus comes, it is chosen whole, without the blanks in front of it.
class BoxEdit : public QLineEdit {
public:
    enum class Holds { Text, Figure };
    BoxEdit(Holds holds, QWidget* parent);

    /// Shows what the program has put into the box.
    void Put(const QString& text);
    /// The text that Escape brings back: what the program put in last, or what stood there when the focus came.
    const QString& Kept() const { return kept; }
    void Keep() { kept = text(); }
    bool HoldsFigure() const { return holds == Holds::Figure; }
    /// How many blanks stand in front of the text.
    int Padding() const { return BlanksAtStart(text()); }
    /// Chooses the whole text, of a figure without its padding.
    void SelectWhole();
    /// Underlines so many characters at the end of the text: what has no room where it is to stand.
    void MarkEnd(std::size_t characters);
    std::size_t MarkedAtEnd() const { return marked; }
    /// Tells that it holds a figure of a rule, which may be typed over.
    void SetWorkedOut() { workedOut = true; }
    bool IsWorkedOut() const { return workedOut; }
    /// Marks it as one of which there is something to tell.
    void SetNoted(bool newNoted);
    bool IsNoted() const { return noted; }
    /// Shows that the cell is one of several that are chosen.
    void SetChosen(bool newChosen);
    bool IsChosen() const { return chosen; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    Holds holds;
    QString kept;
    std::size_t marked = 0; ///< characters at the end
    bool chosen = false;
    bool workedOut = false;
    bool noted = false;
    bool choosesByPress = false; ///< the press that brings the focus, until the button is let go
};

/// A drop-down list that the wheel does not turn: the page below it scrolls instead.
class DropDown : public QComboBox {
public:
    explicit DropDown(QWidget* parent);

protected:
    void wheelEvent(QWheelEvent* event) override;
};

/// A list that tells which entry is chosen once a key or the mouse has been dealt with: what follows may fill it anew.
/// Only the chosen row looks chosen; with the focus and no choice the frame alone shows the focus.
class EntryList : public QListWidget {
public:
    EntryList(QWidget* parent, std::function<void(int row)> settled);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    bool Handle(bool settles, const std::function<bool()>& work);
    void Settle();

    std::function<void(int row)> settled;
    bool inEvent = false;
};

/// A button that can be marked as one of which there is something to tell.
template<class Button>
class Noted : public Button {
public:
    using Button::Button;
    void SetNoted(bool newNoted)
    {
        if (std::exchange(noted, newNoted) != newNoted)
            this->update();
    }
    bool IsNoted() const { return noted; }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        Button::paintEvent(event);
        if (!noted)
            return;
        QPainter painter(this);
        look::DrawDot(painter, this->rect());
    }

private:
    bool noted = false;
};
using PictureButton = Noted<QToolButton>;
using CaptionButton = Noted<QPushButton>;

/// A tick box or option whose mark is the box's to change, however often it is clicked.
template<class Button>
class Marked : public Button {
public:
    using Button::Button;

protected:
    void nextCheckState() override {}
};

} // namespace quillmere
