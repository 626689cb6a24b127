#pragma once

#include "desktop/PageReplay.h"
#include "printing/jobs/frmVSPrint.h"

#include <QAbstractScrollArea>

#include <deque>

namespace quillmere {

/// Shows the pages of the preview's document, as its zoom says, and scrolls over them.
class PreviewSurface : public QAbstractScrollArea {
public:
    PreviewSurface(frmVSPrint& preview, QWidget* parent);

    /// Follows the page shown and the zoom.
    void Follow();
    /// Cuts the tie to the preview.
    void Detach() { detached = true; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Prepared {
        int page;
        std::unique_ptr<PageReplay> replay;
    };
    /// Tells the preview, once, that it has been painted.
    void TellPainted();
    void LayOut();
    void ShowSheet(const PreviewSheet& sheet);
    void PaintEdge(QPainter& painter) const;
    QPointF Origin() const;
    const PageReplay& ReplayOf(int page);

    frmVSPrint& preview;
    PreviewPicture picture;
    ZoomMode mode = ZoomMode::PageWidth;
    int page = 0;
    ReplayFonts fonts;
    std::deque<Prepared> prepared; ///< pages painted lately, the last first
    QPoint dragged;                ///< where the mouse was while it drags the picture
    bool isPainted = false;
    bool detached = false;
};

} // namespace quillmere
