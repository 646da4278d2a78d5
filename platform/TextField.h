#pragma once

#include "gui/Control.h"
#include "gui/Text.h"
#include "platform/TextFieldModel.h"

#include <memory>

namespace gui {

class Timer;

/// Shows a one-line text with caret and selection, and follows the mouse. Keys come from whoever owns it.
class TextField : public Control {
public:
    /// @param textFont  properties of the letters; outlives the field
    TextField(UserInterface& ui, Control* parent, TextFieldModel& fieldModel, const Text& textFont);
    ~TextField() override;

    void SetAlignment(Alignment newAlignment);
    void SetPassword(bool hidden);
    /// The model was changed: the caret comes into view, and shows.
    void ModelChanged();
    void ShowCaret(bool shows);

    void PaintContent(Canvas& canvas) override;
    void MouseDown(int button, Point point, int flags) override;
    void MouseMoved(Point point, int flags) override;
    void MouseUp(int button, Point point, int flags) override;
    void Resized() override;

private:
    std::string ShownBetween(int first, int last) const;
    /// From the start of the text, logical units.
    float WidthTo(int place) const;
    int PlaceAt(float x) const;
    float Origin() const;
    void DrawPart(Canvas& canvas, int first, int last, Color color) const;

    TextFieldModel& model;
    const Text& font;
    std::unique_ptr<Text> measure;
    std::unique_ptr<Timer> blink;
    Alignment alignment = Alignment::Left;
    bool password = false;
    bool hasCaret = false;
    bool caretIsOn = false;
    bool selecting = false;
    float offset = 0.0f;  // how far a long text is scrolled
};

}  // namespace gui
