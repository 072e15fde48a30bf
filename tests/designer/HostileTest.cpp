// Components, files and texts that do not behave.

#include "WindowFixture.h"

namespace kx::test {
namespace {

/// A button that does what no component should.
class TUnruly : public TCustomControl {
    KX_CLASS()
    explicit TUnruly(TComponent* owner) : TCustomControl(owner) { SetBounds(0, 0, 40, 20); }

    int Level() const { return FLevel; }
    void SetLevel(int value) {
        FLevel = value; // before it refuses
        if (value > 10) {
            throw EInvalidOperation("too much");
        }
    }
    int Painted = 0;

protected:
    void Paint() override {
        ++Painted;
        throw EInvalidOperation("out of paint");
    }

private:
    int FLevel = 0;
};
const TClass& TUnruly::StaticClass() {
    static const TClassBuilder<TUnruly> cls("TUnruly", TCustomControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Level", &TUnruly::Level, &TUnruly::SetLevel).Default = 0;
    });
    return cls.Class();
}

class Hostile : public TDesignerWindowTest {
protected:
    Hostile() { RegisterClass(TUnruly::StaticClass()); }
};

TEST_F(Hostile, AControlThatCannotPaintIsToldOfInTheStatusLine) {
    Open();
    auto& unruly = dynamic_cast<TUnruly&>(
        *Designer().CreateComponent(TUnruly::StaticClass(), &Designer().Form(), {20, 160, 80, 190}));
    ASSERT_TRUE(Until([&] { return unruly.Painted > 0; }));
    Settle();
    EXPECT_EQ(ShownMessageBox(), nullptr);
    EXPECT_THAT(Window->Status(), HasSubstr("out of paint"));
    ClickOn(At("Unruly1"));
    EXPECT_EQ(PrimaryName(), "Unruly1");
}

TEST_F(Hostile, ASetterThatRefusesHalfwayChangesNothing) {
    Open();
    auto& unruly = dynamic_cast<TUnruly&>(
        *Designer().CreateComponent(TUnruly::StaticClass(), &Designer().Form(), {20, 160, 80, 190}));
    const std::string before = Text();
    designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    grid.SelectRow(grid.FindRow("Level"));
    const TRect r = grid.ValueRect(grid.FindRow("Level"));
    ClickOn(grid.ClientToScreen({r.Left + 20, (r.Top + r.Bottom) / 2}));
    Press('A', {VK_CONTROL});
    TypeText("11");
    Press(VK_RETURN);
    EXPECT_THAT(grid.Error(), HasSubstr("too much"));
    EXPECT_EQ(unruly.Level(), 0);
    EXPECT_EQ(Text(), before);
}

TEST_F(Hostile, TwoFormsOfOneClassStayApart) {
    designer::WriteWholeFile(Folder.Path("Second.dfm"), SampleForm);
    ASSERT_TRUE(Window->OpenPath(Folder.Path()));
    ASSERT_EQ(Window->Project()->ModuleCount(), 2);
    Window->Project()->Module(0).Open();
    Window->Project()->Module(1).Open();
    ASSERT_EQ(Window->Document(), &Window->Project()->Module(1));
    EXPECT_FALSE(Window->Document()->IsModified());
    The("OkButton").SetLeft(24);
    Designer().Record("Move");
    Window->Command("Save");
    const std::string saved = designer::ReadWholeFile(Folder.Path("Second.dfm"));
    EXPECT_THAT(saved, testing::StartsWith("object OrderForm: TOrderForm\n"));
    EXPECT_THAT(saved, HasSubstr("Left = 24"));
    EXPECT_EQ(designer::ReadWholeFile(Folder.Path("OrderForm.dfm")), SampleForm);
}

TEST_F(Hostile, FormsInTheBinaryFormatKeepIt) {
    const std::string binary = designer::FormBinaryOfText(SampleForm);
    designer::WriteWholeFile(Path, binary);
    Open();
    EXPECT_FALSE(Window->Document()->IsModified());
    The("OkButton").SetLeft(24);
    Designer().Record("Move");
    Window->Command("Save");
    EXPECT_THAT(FileText(), testing::StartsWith("TPF0"));
    Designer().Undo();
    Window->Command("Save");
    EXPECT_EQ(FileText(), binary);
}

TEST_F(Hostile, AFolderWithoutFormsIsAnEmptyProject) {
    Folder.AddFolder("empty");
    EXPECT_TRUE(Window->OpenPath(Folder.Path("empty")));
    EXPECT_EQ(Window->Project()->ModuleCount(), 0);
    EXPECT_EQ(Window->Document(), nullptr);
    for (const char* command :
         {"Undo",         "Redo",         "Cut",       "Copy",         "Paste", "Delete",   "SelectAll",
          "SelectParent", "BringToFront", "AlignLeft", "SameSize",     "Run",   "ViewText", "ViewClass",
          "ViewForm",     "ShowTabOrder", "ShowGrid",  "LockControls", "Save",  "SaveAll",  "CloseForm"}) {
        EXPECT_NO_THROW(Window->Command(command)) << command;
    }
    EXPECT_EQ(ShownMessageBox(), nullptr);
}

} // namespace
} // namespace kx::test
