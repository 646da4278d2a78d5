#include "EditorFixture.h"
#include "gui/Text.h"
#include "gui/TextEditor.h"
#include "platform/TextFieldModel.h"

#include <xkbcommon/xkbcommon.h>

namespace {

using namespace gui;
using Step = TextFieldModel::Step;

TEST(TextFieldModel, MovesByLettersAndWords)
{
    struct Row {
        int caret;
        bool forwards;
        Step step;
        int target;
    };
    TextFieldModel model;
    model.SetText("one  two,\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(model.Length(), 11);
    for (const Row& row :
         {Row{0, true, Step::Word, 5}, Row{5, true, Step::Word, 9}, Row{9, false, Step::Word, 5},
          Row{11, false, Step::Word, 9}, Row{4, false, Step::Word, 0}, Row{10, true, Step::Character, 11},
          Row{11, true, Step::Character, 11}, Row{3, false, Step::End, 0}}) {
        model.Select(row.caret, row.caret);
        model.Move(row.forwards, row.step, false);
        EXPECT_EQ(model.Caret(), row.target) << row.caret;
    }
}

TEST(TextFieldModel, EditsAndUndoes)
{
    TextFieldModel model;
    model.SetText("12.5 ms");
    model.Select(0, -1);
    for (const char* typed : {"4", "2", "\xC2\xB5"})
        EXPECT_TRUE(model.Insert(typed));
    EXPECT_EQ(model.Text(), "42\xC2\xB5");
    EXPECT_FALSE(model.Insert("\n\t"));
    EXPECT_TRUE(model.Insert("a\nb"));
    EXPECT_EQ(model.Text(), "42\xC2\xB5"
                            "ab");
    EXPECT_TRUE(model.Erase(false, Step::Word));
    EXPECT_EQ(model.Text(), "");
    EXPECT_TRUE(model.Undo());
    EXPECT_TRUE(model.Undo());
    EXPECT_EQ(model.Text(), "42\xC2\xB5");
    EXPECT_TRUE(model.Undo());
    EXPECT_EQ(model.Text(), "12.5 ms");
    EXPECT_EQ(model.SelectedText(), "12.5 ms");
    EXPECT_FALSE(model.Undo());
}

class TextEditorTest : public EditorFixture {
protected:
    void SetUp() override
    {
        EditorFixture::SetUp();
        Open();
        host->TakeFocus();
        editor = ui->Platform().CreateTextEditor();
        for (NotifyEvent* event :
             {&editor->OnChanged, &editor->OnReturn, &editor->OnEscape, &editor->OnClosed})
            event->setHandler(NotifyEvent::handler([this, event](void*) { heard.push_back(event); }));
        ASSERT_TRUE(editor->Open("12 ms", {20.0f, 20.0f, 120.0f, 40.0f}));
        ASSERT_TRUE(Until([&] { return host->FocusOwner() == ui->Window().Window(); }));
    }
    void TearDown() override
    {
        editor.reset();
        EditorFixture::TearDown();
    }
    void Ctrl(std::uint32_t symbol)
    {
        host->Key(XKB_KEY_Control_L, true);
        host->Type(symbol);
        host->Key(XKB_KEY_Control_L, false);
    }
    bool Heard(NotifyEvent& event) { return std::find(heard.begin(), heard.end(), &event) != heard.end(); }

    std::unique_ptr<TextEditor> editor;
    std::vector<NotifyEvent*> heard;
};

TEST_F(TextEditorTest, TypesReplacesAndReturns)
{
    for (const std::uint32_t symbol : {XKB_KEY_7, XKB_KEY_8, XKB_KEY_BackSpace, XKB_KEY_Home, XKB_KEY_minus})
        host->Type(symbol);
    EXPECT_TRUE(Until([&] { return editor->GetText() == "-7"; }));
    EXPECT_TRUE(Heard(editor->OnChanged));
    host->Type(XKB_KEY_Return);
    EXPECT_TRUE(Until([&] { return Heard(editor->OnReturn); }));
    host->Type(XKB_KEY_Escape);
    EXPECT_TRUE(Until([&] { return Heard(editor->OnEscape); }));
    EXPECT_FALSE(control->Has("key")) << "the field has the keyboard to itself";
    editor->Close();
    EXPECT_TRUE(Heard(editor->OnClosed));
    EXPECT_EQ(editor->GetText(), "-7");
    EXPECT_TRUE(Until([&] { return host->FocusOwner() == host->Window(); }));
}

TEST_F(TextEditorTest, CutsPastesAndUndoes)
{
    Ctrl(XKB_KEY_x);
    EXPECT_TRUE(Until([&] { return editor->GetText().empty(); }));
    EXPECT_EQ(ui->Platform().GetClipboardText(), "12 ms");
    Ctrl(XKB_KEY_v);
    Ctrl(XKB_KEY_v);
    EXPECT_TRUE(Until([&] { return editor->GetText() == "12 ms12 ms"; }));
    Ctrl(XKB_KEY_z);
    EXPECT_TRUE(Until([&] { return editor->GetText() == "12 ms"; }));
}

TEST_F(TextEditorTest, DeadKeysComposeWithWhatFollows)
{
    host->AddKey(XKB_KEY_dead_acute);
    struct Row {
        std::vector<std::uint32_t> keys;
        const char* text;
    };
    for (const Row& row : {Row{{XKB_KEY_dead_acute, XKB_KEY_e}, "\xC3\xA9"},
                           Row{{XKB_KEY_dead_acute, XKB_KEY_7, XKB_KEY_e}, "e"},  // nothing has that accent
                           Row{{XKB_KEY_dead_acute, XKB_KEY_space, XKB_KEY_o}, "'o"}}) {
        editor->SetText("");
        for (const std::uint32_t symbol : row.keys)
            host->Type(symbol);
        EXPECT_TRUE(Until([&] { return editor->GetText() == row.text; })) << editor->GetText();
    }
}

TEST_F(TextEditorTest, TheMouseSetsTheCaretAndClosesItElsewhere)
{
    host->Click(123, 80);  // at its left edge
    host->Type(XKB_KEY_x);
    EXPECT_TRUE(Until([&] { return editor->GetText() == "x12 ms"; }));
    host->Click(280, 130);
    EXPECT_TRUE(Until([&] { return Heard(editor->OnClosed); }));
    EXPECT_TRUE(Until([&] { return control->Has("down"); })) << "the press goes on to the tree";
}

}  // namespace
