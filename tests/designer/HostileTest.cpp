// SPDX-License-Identifier: MIT
// Components, files and texts that do not behave.

#include "WindowFixture.h"

#include "kx/ide/ComponentEditors.h"

#include <stdexcept>

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
    const std::string& Mood() const { return FMood; }
    void SetMood(const std::string& value) { FMood = value; }
    int Painted = 0;

protected:
    void Paint() override {
        ++Painted;
        throw EInvalidOperation("out of paint");
    }

private:
    int FLevel = 0;
    std::string FMood;
};
const TClass& TUnruly::StaticClass() {
    static const TClassBuilder<TUnruly> cls("TUnruly", TCustomControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Level", &TUnruly::Level, &TUnruly::SetLevel).Default = 0;
        c.Property("Mood", &TUnruly::Mood, &TUnruly::SetMood);
    });
    return cls.Class();
}

/// An editor that throws from the function that `Throws` names.
class TSulkyProperty : public TStringProperty {
public:
    static inline std::string Throws;
    static void May(const char* what) {
        if (Throws == what) {
            throw std::runtime_error(std::string("sulky ") + what); // its author knows the standard's
        }
    }
    TSulkyProperty(IDesigner& designer, std::vector<TInstanceProperty> properties)
        : TStringProperty(designer, std::move(properties)) {
        May("TSulkyProperty");
    }
    std::string GetName() const override {
        May("GetName");
        return TStringProperty::GetName();
    }
    TPropertyAttributes GetAttributes() const override {
        May("GetAttributes");
        return {paMultiSelect, paValueList, paDialog, paSubProperties};
    }
    std::string GetValue() const override {
        May("GetValue");
        return TStringProperty::GetValue();
    }
    void SetValue(const std::string& value) override {
        TStringProperty::SetValue(value); // before it refuses
        May("SetValue");
    }
    void GetValues(const TValueProc& proc) override {
        proc("cheerful");
        May("GetValues");
    }
    void GetProperties(const TPropertyProc&) override { May("GetProperties"); }
    void Edit() override {
        dynamic_cast<TUnruly&>(Instance()).SetMood("half");
        May("Edit");
    }
};

/// Its commands do half of what they are to do.
class TSulkyEditor : public TComponentEditor {
public:
    using TComponentEditor::TComponentEditor;
    int GetVerbCount() const override { return 1; }
    std::string GetVerb(int) const override { return "Sulk"; }
    void ExecuteVerb(int) override {
        dynamic_cast<TUnruly&>(Component()).SetLevel(3);
        Designer().CreateComponent(TButton::StaticClass(), nullptr, {1, 1, 40, 20});
        throw EInvalidOperation("no more");
    }
};

class Hostile : public TDesignerWindowTest {
protected:
    Hostile() {
        RegisterClass(TUnruly::StaticClass());
        RegisterPropertyEditor("string", &TUnruly::StaticClass(), "Mood", MakePropertyEditor<TSulkyProperty>);
    }
    ~Hostile() override { TSulkyProperty::Throws.clear(); }
    TUnruly& AddUnruly() {
        return dynamic_cast<TUnruly&>(
            *Designer().CreateComponent(TUnruly::StaticClass(), &Designer().Form(), {20, 160, 80, 190}));
    }
};

TEST_F(Hostile, AnEditorThatThrowsChangesNothing) {
    Open();
    AddUnruly();
    designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    const std::string before = Text();
    for (const char* what :
         {"GetName", "GetAttributes", "GetValue", "SetValue", "GetValues", "GetProperties", "Edit"}) {
        TSulkyProperty::Throws = what;
        Designer().SelectOne(Designer().Form());
        Designer().SelectOne(The("Unruly1"));
        Settle();
        const int row = grid.FindRow("Mood");
        ASSERT_GE(row, 0) << what;
        grid.SelectRow(row);
        grid.Expand(row, true);
        Settle();
        const TRect r = grid.ValueRect(grid.FindRow("Mood"));
        if (std::string(what) != "GetAttributes") { // else it cannot be changed
            ClickOn(grid.ClientToScreen({r.Left + 10, (r.Top + r.Bottom) / 2}));
            TypeText("x");
            Settle();
            if (std::string(what) == "SetValue") {
                EXPECT_FALSE(grid.Commit());
                EXPECT_THAT(grid.Error(), HasSubstr("sulky"));
            }
            grid.Revert();
        }
        if (std::string(what) == "Edit") {
            grid.EditRow(grid.FindRow("Mood"));
            EXPECT_THAT(grid.Error(), HasSubstr("sulky"));
            TSulkyProperty::Throws.clear();
            grid.EditRow(grid.FindRow("Mood"));
            EXPECT_EQ(grid.Error(), "");
            Designer().Undo();
        }
        EXPECT_EQ(ShownMessageBox(), nullptr) << what;
        TSulkyProperty::Throws.clear();
        EXPECT_EQ(Text(), before) << what;
        EXPECT_EQ(designer::WriteForm(Designer().Form()), Designer().State()) << what;
    }
}

TEST_F(Hostile, AnEditorThatThrowsWhileItIsMadeOrAskedCostsItsOwnPropertyOnly) {
    Open();
    TUnruly& first = AddUnruly();
    TUnruly& second = AddUnruly();
    const designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    Designer().Select({&first, &second});
    ASSERT_GE(grid.FindRow("Mood"), 0);
    const int rows = grid.RowCount();
    for (const char* what : {"TSulkyProperty", "GetAttributes"}) {
        TSulkyProperty::Throws = what;
        Designer().SelectOne(Designer().Form());
        Designer().Select({&first, &second});
        EXPECT_EQ(grid.FindRow("Mood"), -1) << what;
        EXPECT_EQ(grid.RowCount(), rows - 1) << what;
        EXPECT_EQ(grid.RowValue(grid.FindRow("Level")), "0") << what;
    }
    TSulkyProperty::Throws.clear();
    EXPECT_EQ(ShownMessageBox(), nullptr);
}

TEST_F(Hostile, ACommandOfAComponentThatFailsHalfwayIsTakenBack) {
    Open();
    RegisterComponentEditor<TSulkyEditor>(TUnruly::StaticClass());
    AddUnruly();
    const std::string before = Text();
    EXPECT_EQ(AnswerTo(
                  [&] {
                      DoubleClickAt(At("Unruly1"));
                      Settle();
                  },
                  IDOK),
              "no more");
    EXPECT_EQ(Text(), before);
    EXPECT_EQ(designer::WriteForm(Designer().Form()), Designer().State());
    EXPECT_FALSE(Has("Button1"));
    EXPECT_EQ(The<TUnruly>("Unruly1").Level(), 0);
}

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
