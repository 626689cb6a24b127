#pragma once

#include "desktop/Growth.h"
#include "desktop/layouts/Layout.h"

#include <QGroupBox>
#include <QLabel>
#include <QWidget>

namespace quillmere {

/// A part of a layout, between two heights or on a page of the tab strip: draws what lies there, and is the parent of
/// the controls.
class Canvas : public QWidget {
public:
    Canvas(const Layout& layout, int top, int bottom, const Growth& growth, QWidget* parent);
    /// What lies between two heights is now of this size.
    void Span(int newTop, int bottom);
    /// A page, which is as large as the tab strip makes it.
    Canvas(const Layout& layout, int page, const Growth& growth, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Place {
        int page, top;
    };
    Canvas(const Layout& layout, Place place, const Growth& growth, QWidget* parent);

    const Layout& layout;
    const Growth& growth;
    int page;
    int top;
};

/// A section of a form, drawn by the canvas below it: its controls are spoken as one group with its name.
class Section : public QWidget {
public:
    using QWidget::QWidget;
};

/// A label of several lines: a word that is longer than a line goes on in the next.
class WrappedLabel : public QLabel {
public:
    explicit WrappedLabel(QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A label that shows an amount.
class FigureLabel : public QLabel {
public:
    explicit FigureLabel(QWidget* parent);
};

/// A group of controls: its frame and title. What stands in it lies over it.
class Group : public QGroupBox {
public:
    using QGroupBox::QGroupBox;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace quillmere
