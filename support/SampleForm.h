// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Classes.h"
#include "kx/core/TypInfo.h"

#include <algorithm>
#include <string>
#include <vector>

// Classes with every kind of published property, for the tests of form files and for the fuzzers.

namespace kx::sample {

enum TAlign { alNone, alTop, alBottom, alClient };
KX_ENUM(TAlign, "alNone", "alTop", "alBottom", "alClient")

enum TOption { opWrap, opReadOnly, opLast };
KX_ENUM(TOption, "opWrap", "opReadOnly", "opLast")
using TOptions = TSet<TOption>;

enum class TColor : int32_t {};
inline const TIdentInfo& KxIdentInfo(TColor) {
    static const TIdentInfo info{{{0, "clBlack"}, {255, "clRed"}, {-16777201, "clBtnFace"}}};
    return info;
}

/// What the service property of a control refers to.
class IService {
public:
    virtual ~IService() = default;
    virtual int Serve() const = 0;
};

class TShadow : public TPersistent {
    KX_CLASS()
    int Depth() const { return FDepth; }
    void SetDepth(int value) { FDepth = value; }

private:
    int FDepth = 1;
};

class TFont : public TPersistent {
    KX_CLASS()
    const std::string& Name() const { return FName; }
    void SetName(const std::string& value) { FName = value; }
    int Size() const { return FSize; }
    void SetSize(int value) { FSize = value; }
    TShadow& Shadow() { return FShadow; }

private:
    std::string FName;
    int FSize = 8;
    TShadow FShadow;
};

class TButton;

class TColumns;

/// An item with a reference, an event and items of its own.
class TColumn : public TCollectionItem {
    KX_CLASS()
    explicit TColumn(TCollection* collection);
    ~TColumn() override;

    const std::string& Title() const { return FTitle; }
    void SetTitle(const std::string& value) { FTitle = value; }
    int Width() const { return FWidth; }
    void SetWidth(int value) { FWidth = value; }
    TComponent* Link() const { return FLink; }
    void SetLink(TComponent* value) { FLink = value; }
    const TNotifyEvent& OnClick() const { return FOnClick; }
    void SetOnClick(const TNotifyEvent& value) { FOnClick = value; }
    TColumns& Parts() { return *FParts; }

private:
    std::string FTitle;
    int FWidth = 50;
    TComponent* FLink = nullptr;
    TNotifyEvent FOnClick;
    std::unique_ptr<TColumns> FParts;
};

class TColumns : public TCollectionOf<TColumn> {
    KX_CLASS()

    int Updates = 0;

protected:
    void Update(TCollectionItem*) override { ++Updates; }
};

inline TColumn::TColumn(TCollection* collection) : TCollectionItem(collection), FParts(new TColumns) {}
inline TColumn::~TColumn() = default;

/// A component that shows inside another one, which frees it.
class TControl : public TComponent {
    KX_CLASS()
    explicit TControl(TComponent* owner) : TComponent(owner) { ++Alive; }
    ~TControl() override {
        Destroying();
        while (!FChildren.empty()) {
            FChildren.back()->Free();
        }
        SetParentComponent(nullptr);
        --Alive;
    }

    TComponent* GetParentComponent() const override { return FParent; }
    void SetParentComponent(TComponent* parent) override {
        if (FParent) {
            std::erase(FParent->FChildren, this);
        }
        FParent = dynamic_cast<TControl*>(parent);
        if (FParent) {
            FParent->FChildren.push_back(this);
        }
    }
    void GetChildren(const TGetChildProc& proc, TComponent* root) override {
        for (size_t i = 0; i < FChildren.size(); ++i) {
            proc(FChildren[i]);
        }
        if (root == this) {
            for (int i = 0; i < ComponentCount(); ++i) {
                if (!Components(i)->HasParent()) {
                    proc(Components(i));
                }
            }
        }
    }
    void Loaded() override {
        TComponent::Loaded();
        LoadedOrder.push_back(Name());
    }
    const std::vector<TControl*>& Children() const { return FChildren; }

    const std::string& Caption() const { return FCaption; }
    void SetCaption(const std::string& value) {
        if (value == "refused") {
            throw EInvalidOperation("This caption is refused");
        }
        FCaption = value;
    }
    int Left() const { return FLeft; }
    void SetLeft(int value) { FLeft = value; }
    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool value) { FEnabled = value; }
    TAlign Align() const { return FAlign; }
    void SetAlign(TAlign value) { FAlign = value; }
    TOptions Options() const { return FOptions; }
    void SetOptions(TOptions value) { FOptions = value; }
    TColor Color() const { return FColor; }
    void SetColor(TColor value) { FColor = value; }
    char Key() const { return FKey; }
    void SetKey(char value) { FKey = value; }
    int64_t Big() const { return FBig; }
    void SetBig(int64_t value) { FBig = value; }
    double Ratio() const { return FRatio; }
    void SetRatio(double value) { FRatio = value; }
    TFont& Font() { return FFont; }
    TStringList& Items() { return FItems; }
    TColumns& Columns() { return FColumns; }
    TComponent* Target() const { return FTarget; }
    void SetTarget(TComponent* value) { FTarget = value; }
    TButton* Button() const { return FButton; }
    void SetButton(TButton* value) { FButton = value; }
    IService* Service() const { return FService; }
    void SetService(IService* value) { FService = value; }
    const TNotifyEvent& OnClick() const { return FOnClick; }
    void SetOnClick(const TNotifyEvent& value) { FOnClick = value; }
    int ChildCount() const { return static_cast<int>(FChildren.size()); }

    void DefineProperties(TFiler& filer) override {
        TComponent::DefineProperties(filer);
        filer.DefineBinaryProperty(
            "Picture",
            [this](TStream& stream) {
                Picture.resize(static_cast<size_t>(stream.Size()));
                stream.ReadBuffer(Picture.data(), Picture.size());
            },
            [this](TStream& stream) { stream.WriteBuffer(Picture.data(), Picture.size()); }, !Picture.empty());
        filer.DefineProperty(
            "Numbers",
            [this](TReader& reader) {
                Numbers.clear();
                reader.ReadListBegin();
                while (!reader.EndOfList()) {
                    Numbers.push_back(reader.ReadInteger());
                }
                reader.ReadListEnd();
            },
            [this](TWriter& writer) {
                writer.WriteListBegin();
                for (const int number : Numbers) {
                    writer.WriteInteger(number);
                }
                writer.WriteListEnd();
            },
            !Numbers.empty());
        filer.DefineProperty(
            "MoreColumns",
            [this](TReader& reader) {
                reader.ReadValue();
                reader.ReadCollection(MoreColumns);
            },
            [this](TWriter& writer) { writer.WriteCollection(MoreColumns); }, MoreColumns.Count() > 0);
    }

    std::string Picture;
    std::vector<int> Numbers;
    TColumns MoreColumns;

    static inline int Alive = 0;                        ///< How many controls there are.
    static inline std::vector<std::string> LoadedOrder; ///< Names, as `Loaded` ran.

private:
    TControl* FParent = nullptr;
    std::vector<TControl*> FChildren;
    std::string FCaption;
    int FLeft = 0;
    bool FEnabled = true;
    TAlign FAlign = alNone;
    TOptions FOptions;
    TColor FColor{-16777201};
    char FKey = 0;
    int64_t FBig = 0;
    double FRatio = 0;
    TFont FFont;
    TStringList FItems;
    TColumns FColumns;
    TComponent* FTarget = nullptr;
    TButton* FButton = nullptr;
    IService* FService = nullptr;
    TNotifyEvent FOnClick;
};

class TButton : public TControl {
    KX_CLASS()
    using TControl::TControl;
};

class TPanel : public TControl {
    KX_CLASS()
    using TControl::TControl;
};

/// A component without a parent that implements the interface.
class TServer : public TComponent, public IService {
    KX_CLASS()
    explicit TServer(TComponent* owner) : TComponent(owner) { ++Alive; }
    ~TServer() override { --Alive; }
    int Serve() const override { return 42; }

    static inline int Alive = 0;
};

class TForm : public TControl {
    KX_CLASS()
    explicit TForm(TComponent* owner = nullptr) : TControl(owner) {}

    void Button1Click(TObject* sender) { Clicked = sender; }
    void FormDropped(TObject*, int) {}
    TObject* Clicked = nullptr;

    TButton* Button1 = nullptr;
    TServer* Server1 = nullptr;
};

// --- Identities

inline const TClass& TShadow::StaticClass() {
    static const TClassBuilder<TShadow> cls("TShadow", TPersistent::StaticClass(), [](auto& c) {
        c.Property("Depth", &TShadow::Depth, &TShadow::SetDepth).Default = 1;
    });
    return cls.Class();
}

inline const TClass& TFont::StaticClass() {
    static const TClassBuilder<TFont> cls("TFont", TPersistent::StaticClass(), [](auto& c) {
        c.Property("Name", &TFont::Name, &TFont::SetName);
        c.Property("Size", &TFont::Size, &TFont::SetSize).Default = 8;
        c.SubObject("Shadow", &TFont::Shadow, nullptr);
    });
    return cls.Class();
}

inline const TClass& TColumn::StaticClass() {
    static const TClassBuilder<TColumn> cls("TColumn", TCollectionItem::StaticClass(), [](auto& c) {
        c.Property("Title", &TColumn::Title, &TColumn::SetTitle);
        c.Property("Width", &TColumn::Width, &TColumn::SetWidth).Default = 50;
        c.Reference("Link", &TColumn::Link, &TColumn::SetLink);
        c.Property("OnClick", &TColumn::OnClick, &TColumn::SetOnClick);
        c.SubObject("Parts", &TColumn::Parts, nullptr).Stored = [](const TObject& o) {
            return const_cast<TColumn&>(static_cast<const TColumn&>(o)).Parts().Count() > 0;
        };
    });
    return cls.Class();
}

inline const TClass& TColumns::StaticClass() {
    static const TClassBuilder<TColumns> cls("TColumns", TCollection::StaticClass());
    return cls.Class();
}

inline const TClass& TControl::StaticClass() {
    static const TClassBuilder<TControl> cls("TControl", TComponent::StaticClass(), [](auto& c) {
        c.Property("Caption", &TControl::Caption, &TControl::SetCaption);
        c.Property("Left", &TControl::Left, &TControl::SetLeft).Default = 0;
        c.Property("Enabled", &TControl::Enabled, &TControl::SetEnabled).Default = 1;
        c.Property("Align", &TControl::Align, &TControl::SetAlign).Default = alNone;
        c.Property("Options", &TControl::Options, &TControl::SetOptions).Default = 0;
        c.Property("Color", &TControl::Color, &TControl::SetColor).Default = -16777201;
        c.Property("Key", &TControl::Key, &TControl::SetKey).Default = 0;
        c.Property("Big", &TControl::Big, &TControl::SetBig).Default = 0;
        c.Property("Ratio", &TControl::Ratio, &TControl::SetRatio);
        c.SubObject("Font", &TControl::Font, nullptr);
        c.SubObject("Items", &TControl::Items, nullptr);
        c.SubObject("Columns", &TControl::Columns, nullptr).Stored = [](const TObject& o) {
            return const_cast<TControl&>(static_cast<const TControl&>(o)).Columns().Count() > 0;
        };
        c.Reference("Target", &TControl::Target, &TControl::SetTarget);
        c.Reference("Button", &TControl::Button, &TControl::SetButton);
        c.Interface("Service", &TControl::Service, &TControl::SetService);
        c.Property("OnClick", &TControl::OnClick, &TControl::SetOnClick);
        c.Property("ChildCount", &TControl::ChildCount, nullptr);
    });
    return cls.Class();
}

inline const TClass& TButton::StaticClass() {
    static const TClassBuilder<TButton> cls("TButton", TControl::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

inline const TClass& TPanel::StaticClass() {
    static const TClassBuilder<TPanel> cls("TPanel", TControl::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

inline const TClass& TServer::StaticClass() {
    static const TClassBuilder<TServer> cls("TServer", TComponent::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

inline const TClass& TForm::StaticClass() {
    static const TClassBuilder<TForm> cls("TForm", TControl::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Method("Button1Click", &TForm::Button1Click);
        c.Method("FormDropped", &TForm::FormDropped);
        c.Field("Button1", &TForm::Button1);
        c.Field("Server1", &TForm::Server1);
    });
    return cls.Class();
}

inline void RegisterSampleClasses() { RegisterClasses<TForm, TPanel, TButton, TServer, TControl>(); }

/// A form that holds every kind of value.
inline constexpr std::string_view RichForm = R"(object Form1: TForm
  Caption = 'It'#39's '#13#10'caf)"
                                             "\xC3\xA9"
                                             R"( on a '
  Left = -70000
  Enabled = False
  Align = alClient
  Options = [opWrap, opLast]
  Color = clRed
  Key = '*'
  Big = 5000000000
  Ratio = 0.1
  Font.Name = 'Tahoma'
  Font.Size = 10
  Font.Shadow.Depth = 3
  Items.Strings = (
    'one'
    ''
    'three')
  Columns = <
    item
      Title = 'A'
      Link = Button1
      OnClick = Button1Click
      Parts = <
        item
          Title = 'inner'
          Link = Server1
        end>
    end
    item
      Width = 7
    end>
  Target = Owner
  Button = Button1
  Service = Server1
  OnClick = Button1Click
  Picture = {
    000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F
    2021}
  Numbers = (
    1
    -2
    300000)
  MoreColumns = <
    item
      Link = Panel1
    end>
  object Panel1: TPanel
    Caption = 'panel'
    object Button1: TButton
      Caption = 'OK'
      Target = Panel1
    end
    object Button2: TButton
      Color = 66051
      Target = Form1.Button1
    end
  end
  object Server1: TServer
    Tag = 5
  end
end
)";

} // namespace kx::sample
