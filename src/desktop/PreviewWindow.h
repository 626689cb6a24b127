#pragma once

#include "desktop/ScreenWindow.h"

namespace quillmere {

class frmVSPrint;
class PreviewSurface;

/// The window of the preview: the strip of controls, and below it the surface that shows the document. It can be made
/// larger and smaller, and its keys work wherever the focus stands.
class PreviewWindow : public ScreenWindow {
public:
    PreviewWindow(frmVSPrint& preview, QWidget* parent, int percent = 100);
    ~PreviewWindow() override;

    void BoxChanged(const Box& box) override;
    void Detach() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void FitToRoom() override;

private:
    bool Obey(const QKeyEvent& event);
    void MakeStrip();
    void FitCaptions();
    /// Places the strip, and the surface below it.
    void LayOut();
    /// Places the strip's controls, in as many lines as the window's width needs; gives its height.
    int LayOutStrip(int width);
    void PlaceWindow();
    void TellPlacement();

    frmVSPrint& preview;
    PreviewSurface* surface = nullptr;
    std::vector<std::vector<QWidget*>> strip; ///< the controls that stay together in a line
    std::vector<QLabel*> captions;            ///< of controls of the strip
};

} // namespace quillmere
