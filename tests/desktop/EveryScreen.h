#pragma once

#include "RunningProgram.h"

#include <QApplication>
#include <QWidget>
#include <gtest/gtest.h>

#include <string_view>
#include <vector>

namespace quillmere::test {

/// A test of each screen that has a layout, on its window.
class EveryScreen : public ::testing::TestWithParam<std::string_view> {
protected:
    /// The screen on its window.
    void Open()
    {
        screen = running.Show(GetParam());
        ASSERT_NE(screen, nullptr) << GetParam() << " does not open";
        window = running.host.WindowOf(*screen);
        window->window()->activateWindow();
        QCoreApplication::processEvents();
    }

    QWidget* WidgetOf(const Box& box) const { return running.host.WidgetOf(*screen, box); }

    /// The boxes that Tab is to visit, in the order of the form.
    std::vector<const Box*> Visited() const
    {
        std::vector<const Box*> visited;
        for (const auto& box : screen->Boxes()) {
            const QWidget* widget = WidgetOf(*box);
            if (widget != nullptr && widget->isEnabled() && widget->isVisible() &&
                (widget->focusPolicy() & Qt::TabFocus) != 0)
                visited.push_back(box.get());
        }
        return visited;
    }

    RunningProgram running;
    Screen* screen = nullptr;
    QWidget* window = nullptr;
};

} // namespace quillmere::test
