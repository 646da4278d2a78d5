#include "gui/TextEditor.h"

#include "support/GuiFixture.h"

#include <thread>

namespace gui {

class TextEditorTest : public GuiFixture {
protected:
    /// A field of no platform, which tells what it is asked to do.
    class PlainEditor : public TextEditor {
    public:
        PlainEditor(UserInterface& editorInterface, EventLog& eventLog)
            : TextEditor(editorInterface), log(eventLog)
        {}
        std::string GetText() const override { return shown; }
        void SetText(const std::string& text) override { log.push_back("text " + (shown = text)); }
        void SetSelection(int first, int last) override
        {
            log.push_back("selection " + std::to_string(first) + ' ' + std::to_string(last));
        }
        void SetFocus() override {}

    protected:
        void CreateNative() override { log.push_back(backing ? "created on backing" : "created"); }
        void DestroyNative() override { log.push_back("destroyed"); }

    private:
        EventLog& log;
        std::string shown;
    };

    std::unique_ptr<PlainEditor> editor = std::make_unique<PlainEditor>(*ui, log);
};

TEST_F(TextEditorTest, OpensOnceAndLeavesNothingBehind)
{
    on(editor->OnClosed, [this] { log.push_back("closed"); });
    EXPECT_TRUE(editor->Open("12 dB", {10, 20, 60, 36}));
    EXPECT_FALSE(editor->Open("13 dB", {0, 0, 60, 36}));
    EXPECT_EQ(takeLog(), (EventLog{"created on backing", "text 12 dB", "selection 0 -1"}));
    ASSERT_EQ(root().Children().size(), 1u);
    EXPECT_EQ(root().Children()[0]->GetBounds(), (Rect{10, 20, 60, 36}));
    ui->Paint();
    editor->Close();
    editor->Close();
    EXPECT_EQ(takeLog(), (EventLog{"destroyed", "closed"}));
    EXPECT_TRUE(root().Children().empty());
    EXPECT_EQ(root().DirtyRect(), (Rect{10, 20, 60, 36}));
    EXPECT_EQ(editor->GetText(), "12 dB");

    editor->CreatesBacking.assign(false);
    editor->SelectsAllOnOpen.assign(false);
    EXPECT_TRUE(editor->Open("again", {0, 0, 9, 9}));
    EXPECT_EQ(takeLog(), (EventLog{"created", "text again"}));
    EXPECT_TRUE(root().Children().empty());
}

TEST_F(TextEditorTest, OtherThreadsAreRefused)
{
    bool opened = true;
    std::thread([&] { opened = editor->Open("x", {0, 0, 9, 9}); }).join();
    EXPECT_FALSE(opened);
    EXPECT_FALSE(editor->IsOpen());
    EXPECT_EQ(takeLog(), EventLog{});
}

TEST_F(TextEditorTest, TheOneThatClosesMayDeleteIt)
{
    on(editor->OnClosed, [this] { editor.reset(); });
    editor->Open("x", {0, 0, 9, 9});
    editor->Close();
    EXPECT_EQ(editor, nullptr);
    EXPECT_TRUE(root().Children().empty());
}

}  // namespace gui
