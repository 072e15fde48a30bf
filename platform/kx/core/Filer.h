// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/Collections.h"
#include "kx/core/Components.h"
#include "kx/core/FormValues.h"
#include "kx/core/GlobalReferences.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kx {

class TFormLines;

namespace detail {

struct TKeptProperty;
class TLiveComponents;

} // namespace detail

/// What a reader and a writer of components have in common: the way in which `DefineProperties` announces values that
/// no published property holds.
class TFiler {
public:
    using TReaderProc = std::function<void(TReader& reader)>;
    using TWriterProc = std::function<void(TWriter& writer)>;
    using TStreamProc = std::function<void(TStream& stream)>;

    TFiler() = default;
    TFiler(const TFiler&) = delete;
    TFiler& operator=(const TFiler&) = delete;
    virtual ~TFiler() = default;

    /// Reads the value by `read`, or writes it by `write` when `hasData`. Either may be empty.
    virtual void DefineProperty(std::string_view name, const TReaderProc& read, const TWriterProc& write,
                                bool hasData) = 0;
    /// The same for a block of bytes. `read` gets a stream that holds just these.
    virtual void DefineBinaryProperty(std::string_view name, const TStreamProc& read, const TStreamProc& write,
                                      bool hasData) = 0;

    /// The form that is read or written.
    TComponent* Root() const { return FRoot; }
    /// Where names of components are looked up: the form, or the inline component around.
    TComponent* LookupRoot() const { return FLookupRoot; }
    /// The same object in the ancestor form, with whose values the written ones are compared; null without one.
    TPersistent* Ancestor() const { return FAncestor; }

protected:
    /// What the object's form file said; null when it keeps nothing.
    static detail::TKept* Kept(TPersistent& instance);
    static detail::TKept& MakeKept(TPersistent& instance); ///< Of a component or an item.

    TComponent* FRoot = nullptr;
    TComponent* FLookupRoot = nullptr;
    TPersistent* FAncestor = nullptr;
};

/// Looks up a handler. `target` holds what the form's class knows under that name and may be replaced; `error` tells
/// whether its absence is an error. Null without an error leaves the event empty.
using TFindEventEvent =
    TEvent<void(TReader& reader, const std::string& methodName, TEventTargetPtr& target, bool& error)>;
/// Something could not be read. `handled` skips it and goes on.
using TReaderErrorEvent = TEvent<void(TReader& reader, const std::string& message, bool& handled)>;
/// Looks up a class that neither the form's fields nor the registered classes know.
using TFindComponentClassEvent = TEvent<void(TReader& reader, const std::string& className, const TClass*& cls)>;
/// May replace the name of a component that a property refers to, before it is looked up.
using TReferenceNameEvent = TEvent<void(TReader& reader, std::string& name)>;
/// May replace the name that a component is about to get.
using TSetNameEvent = TEvent<void(TReader& reader, TComponent* component, std::string& name)>;

/// Reads a component and everything inside it from a binary form. Errors are EReadError or EClassNotFound and name the
/// offset in the stream, or the line of the text that the binary form was made from (`SetLines`).
class TReader : public TFiler {
public:
    /// The stream outlives the reader; its position is behind what was read when the reader is gone.
    explicit TReader(TStream& stream, size_t bufferSize = 4096);
    ~TReader() override;

    /// Reads a whole form, with its signature, into `root`; with null, into a new component of the form's class, which
    /// the caller owns. Returns the root.
    ///
    /// Properties that have no meaning any more, such as Ctl3D, are read over. References are set when everything is
    /// there. A name is looked up in the form, then as the form's own ("Owner" also means the form), then by
    /// `FindGlobalComponent`; a reference that nobody knows is null, and waits: see GlobalReferences.h. `Loaded` runs
    /// at the end, in the order in which the components were completed: children before their parent, the root last.
    /// When anything fails, the components that were created are freed again.
    TComponent* ReadRootComponent(TComponent* root);

    void DefineProperty(std::string_view name, const TReaderProc& read, const TWriterProc& write,
                        bool hasData) override;
    void DefineBinaryProperty(std::string_view name, const TStreamProc& read, const TStreamProc& write,
                              bool hasData) override;

    // --- Values. @throws EReadError when the next value is of another type, too large, or cut off.

    bool ReadBoolean();
    char ReadChar();
    int32_t ReadInteger();
    int64_t ReadInt64();
    double ReadFloat(); ///< Any number.
    std::string ReadString();
    std::string ReadIdent(); ///< A name; also "True", "False", "nil" and "Null".
    uint32_t ReadSet(const TEnumInfo& elements);
    /// A value of an ordinal property: a number, a character, or the names of the property's type.
    int64_t ReadOrdinal(const TPropInfo& property);
    void ReadListBegin();
    void ReadListEnd();
    bool EndOfList();       ///< True in front of the end of a list.
    TValueType NextValue(); ///< Type of the next value, which stays unread.
    /// How the text spells the number of which NextValue has told the type; empty when that is not known.
    const std::string& Spelling() const { return FSpelling; }
    /// Reads a collection behind its type byte `vaCollection`, in place of the items that are there.
    void ReadCollection(TCollection& collection);
    /// A block of bytes, appended to `stream`.
    void ReadBinary(TStream& stream);
    void SkipValue();

    // --- Parts of the format

    void ReadSignature();
    /// Reads the optional prefix of a component. `childPos` is set when the flags hold ffChildPos.
    void ReadPrefix(TFilerFlags& flags, int& childPos);
    TValueType ReadValue(); ///< The type byte of a value.
    std::string ReadStr();  ///< Characters behind a length byte, as they stand.
    std::string ReadText(); ///< A string value as UTF-8.
    void Read(void* buffer, size_t count);
    template <class T> T ReadNumber() { ///< The bytes of a number, lowest first.
        std::array<unsigned char, sizeof(T)> bytes;
        Read(bytes.data(), bytes.size());
        return detail::FromBytes<T>(bytes);
    }
    int64_t Position() const { return FBufferStart + static_cast<int64_t>(FBufferPos); } ///< In the stream.
    int64_t Remaining() const { return FSize - Position(); }
    /// Reads the properties of `component` and the components inside it; what `TComponent::ReadState` does.
    void ReadData(TComponent& component);
    TComponent* Parent() const { return FParent; } ///< Of the component that is being read.

    /// @throws EReadError with the reader's place behind the message: "... at offset 12", or "... on line 3".
    [[noreturn]] void ReadError(const std::string& message) const { Fail(Position(), message); }

    /// Lines of the text that the stream was made from, for messages; not owned.
    void SetLines(const TFormLines* lines) { FLines = lines; }

    /// A reader that keeps what it does not know, as a form designer needs it, loses nothing. A writer writes what has
    /// not changed since the reading as it stood in the form, at its place, and beside it what has changed. Kept are:
    ///
    /// - properties that nobody knows, or that cannot be set; and what OnError let pass;
    /// - components whose class is not there, or that no ancestor has: OnPlaceholder names the class that stands in
    ///   for them. It gets what its published properties take; what is inside is kept unread;
    /// - the names of handlers that the form's class does not have: such an event does nothing;
    /// - the class's name of a root that is of another class, or of the one that OnPlaceholder names.
    ///
    /// Else, and at first, all these are errors, but for the class of a root that is given.
    void SetKeepsUnknown(bool value);
    bool KeepsUnknown() const { return FNoteLoaded != nullptr; }

    const TFindEventEvent& OnFindEvent() const { return FOnFindEvent; }
    void SetOnFindEvent(TFindEventEvent value) { FOnFindEvent = std::move(value); }
    const TReaderErrorEvent& OnError() const { return FOnError; }
    void SetOnError(TReaderErrorEvent value) { FOnError = std::move(value); }
    const TFindComponentClassEvent& OnFindComponentClass() const { return FOnFindComponentClass; }
    void SetOnFindComponentClass(TFindComponentClassEvent value) { FOnFindComponentClass = std::move(value); }
    /// Names the class that stands in for one that is not there; TComponent, unless a handler names another. The root,
    /// for which `Root()` is null, has none at first: without one, EClassNotFound tells.
    const TFindComponentClassEvent& OnPlaceholder() const { return FOnPlaceholder; }
    void SetOnPlaceholder(TFindComponentClassEvent value) { FOnPlaceholder = std::move(value); }
    const TReferenceNameEvent& OnReferenceName() const { return FOnReferenceName; }
    void SetOnReferenceName(TReferenceNameEvent value) { FOnReferenceName = std::move(value); }
    const TSetNameEvent& OnSetName() const { return FOnSetName; }
    void SetOnSetName(TSetNameEvent value) { FOnSetName = std::move(value); }

protected:
    /// The handler of that name among the published methods of `root`'s class; fires OnFindEvent.
    /// @throws EMethodNotFound
    virtual TEventTargetPtr FindMethod(TComponent& root, const std::string& methodName);
    /// The class of that name: of the form's published fields, registered, or found by OnFindComponentClass.
    /// @throws EClassNotFound
    virtual const TClass& FindComponentClass(const std::string& className);
    virtual void SetName(TComponent& component, std::string name); ///< Fires OnSetName.
    virtual bool Error(const std::string& message);                ///< Fires OnError; true when it was handled.

private:
    friend class TComponent;
    friend class TGlobalLoading;
    class TFailure;
    class TSession;
    class TPathScope;
    struct TPathStep;
    struct TFixup;

    static void ComponentGone(TComponent& component);
    static void NotifyLoaded(detail::TLiveComponents& components);

    void Fill();
    uint8_t NextByte(); ///< Stays unread.
    void SetPosition(int64_t position);
    std::string ReadChars(size_t count);
    size_t ReadLength(size_t unitSize);
    std::string ReadWideText();
    void SkipBytes(size_t count);
    void Enter(); ///< A level of nesting; the caller restores FNesting.
    [[noreturn]] void Fail(int64_t position, const std::string& message) const;
    [[noreturn]] void WrongType(TValueType found, std::string_view expected) const;

    std::string Place(int64_t position) const;
    std::string ErrorReading(std::string_view what, int64_t position, const Exception& error) const;

    TComponent* ReadRoot(TComponent* root);
    TComponent* CreateRoot(const std::string& className);
    void ReadComponent();
    struct THeader;
    THeader ReadHeader();
    TComponent* MakeComponent(const THeader& header);
    TComponent* CreateComponent(const TClass& cls, const THeader& header);
    TComponent* CreatePlaceholder(const THeader& header);
    const TClass* FindKnownClass(const std::string& className);
    void KeepHeader(TComponent& component, const THeader& header);
    static void ForgetKept(TComponent& component);
    std::string ReadAgain(int64_t start); ///< The bytes from there up to the position.
    void ReadBody(TComponent& component);
    void ReadChildren(TComponent& component);
    void SkipComponent();
    void SkipComponentBody();
    void SkipProperties();
    void ReadProperties(TPersistent& instance);
    void ReadProperty(TPersistent& instance);
    bool TryProperty(TPersistent& instance, const std::string& name, int64_t start);
    void ReadPropertyPath(TPersistent& instance, const std::string& path);
    bool ReadDefinedProperty(TPersistent& instance, std::string_view name);
    void ReadPropertyValue(TPersistent& instance, const TPropInfo& property);
    void ReadEvent(TPersistent& instance, const TPropInfo& property);
    void ReadReference(const TPropInfo& property);
    void ReadItems(TCollection& collection, TCollection* known);
    void ResolveFixups();
    void ResolveFixup(const TFixup& fixup);
    TComponent* FindReference(const TFixup& fixup);

    TStream& FStream;
    std::vector<char> FBuffer;
    size_t FBufferPos = 0;
    size_t FBufferEnd = 0;
    int64_t FBufferStart = 0;
    int64_t FSize = 0;
    int FNesting = 0;
    std::string FSpelling;

    TSession* FSession = nullptr;
    std::string FRootName;        ///< As the file has it.
    TComponent* FOwner = nullptr; ///< Of the components read next.
    TComponent* FParent = nullptr;
    TComponent* FComponent = nullptr; ///< Whose properties are being read.
    std::vector<TPathStep> FPath;     ///< From that component to the object whose property is being read.
    std::string FDefinedName;         ///< Looked for by `DefineProperties`; empty when found.
    const TFormLines* FLines = nullptr;
    /// TWriter::NoteLoaded of a reader that keeps what it does not know. Only such a one needs a writer.
    void (*FNoteLoaded)(TComponent& root) = nullptr;
    int FPlace = 0; ///< Of the next component in the form.

    TFindEventEvent FOnFindEvent;
    TReaderErrorEvent FOnError;
    TFindComponentClassEvent FOnFindComponentClass;
    TFindComponentClassEvent FOnPlaceholder;
    TReferenceNameEvent FOnReferenceName;
    TSetNameEvent FOnSetName;
};

/// Looks up what an inline component was before its form changed it.
using TFindAncestorEvent = TEvent<void(TWriter& writer, TComponent* component, TComponent*& ancestor)>;

/// Writes a component and everything inside it as a binary form.
///
/// Not written are: what a property's stored test declines; ordinals that equal their default; strings, numbers and
/// references that are empty, zero or null, unless the property has a stored test, which then decides alone; empty
/// events; read-only properties; handlers and components without a name. Of what an ancestor has too, the differences
/// are written instead.
class TWriter : public TFiler, public TValueWriter {
public:
    using TValueWriter::TValueWriter;

    /// Writes a whole form with its signature and flushes.
    /// @throws EWriteError for a form that could not be read again.
    void WriteRootComponent(TComponent& root) { WriteDescendent(root, nullptr); }
    /// The same; of what `ancestor` has too, just the differences. Null: no ancestor.
    void WriteDescendent(TComponent& root, TComponent* ancestor);

    void DefineProperty(std::string_view name, const TReaderProc& read, const TWriterProc& write,
                        bool hasData) override;
    void DefineBinaryProperty(std::string_view name, const TStreamProc& read, const TStreamProc& write,
                              bool hasData) override;

    // Virtual, though nobody overrides them: a program that writes no forms shall not carry what does, though its
    // classes refer to it.

    virtual void WriteCollection(const TCollection& collection); ///< With its type byte.
    /// Writes header, properties and inner components of `component`; what `TComponent::WriteState` does.
    virtual void WriteData(TComponent& component);

    /// Kept numbers stand in the binary form with the spelling of the text from which they came, as with
    /// TFormNumbers::Spelled; at first they do not.
    void SetNumbers(TFormNumbers value) { FNumbers = value; }

    /// The form is written as it is now, and as one that inherits from no other: what its ancestors have brought is its
    /// own then, and properties that nobody knows are left out. So it can be read where the ancestors are not there.
    /// `WriteDescendent` throws EWriteError when the reader, one that keeps what it does not know, lacked them too.
    void SetWritesWhole() { FMode = TMode::Plain; }

    /// Names the ancestor of an inline component that the ancestor form does not know, such as a frame as its own form
    /// file makes it. Without one everything inside is written.
    const TFindAncestorEvent& OnFindAncestor() const { return FOnFindAncestor; }
    void SetOnFindAncestor(TFindAncestorEvent value) { FOnFindAncestor = std::move(value); }

private:
    friend class TReader;

    enum class TMode : uint8_t {
        Kept,  ///< What has not changed since the reading is written as it stood.
        Plain, ///< Everything is written as it is now.
        Note   ///< The same, and noted as what was there just after the reading.
    };

    static void NoteLoaded(TComponent& root);
    void NoteComponent(TComponent& component);
    void WriteComponent(TComponent& component);
    TFilerFlags HeaderFlags(const TComponent& component, const detail::TKept* kept) const;
    void WriteHeader(const TComponent& component, const detail::TKept* kept);
    std::vector<TComponent*> ChildrenOf(TComponent& component);
    void FindStrays(TComponent& component);
    void EnterInline(TComponent& component);
    void WriteInstance(TPersistent& instance);
    void WriteUnchangedAsItStood(const detail::TKept& kept, const std::vector<detail::TKeptProperty>& plain,
                                 const std::vector<detail::TKeptProperty>& now);
    std::vector<detail::TKeptProperty> TakeProperties(TPersistent& instance, TMode mode, TPersistent* ancestor);
    bool IsWrittenAsItIs(const std::string& kept) const;
    void WriteKeptProperty(const detail::TKeptProperty& property);
    void WriteKeptComponents(const std::string& components);
    void WriteProperties(TPersistent& instance);
    void WriteProperty(TPersistent& instance, const TPropInfo& property);
    void WriteOrdinal(const TPersistent& instance, const TPropInfo& property);
    void WriteFloatProperty(const TPersistent& instance, const TPropInfo& property);
    void WriteStringProperty(const TPersistent& instance, const TPropInfo& property);
    void WriteSubObject(const TPersistent& instance, const TPropInfo& property);
    void WriteReference(const TPersistent& instance, const TPropInfo& property);
    void WriteEvent(const TPersistent& instance, const TPropInfo& property);
    void WritePropName(std::string_view name);
    bool EqualsAncestor(const TCollection& collection, const TCollection& ancestor);
    const TObject* AncestorWith(const TPropInfo& property) const;
    void Enter(); ///< A level of nesting; the caller restores FNesting.

    std::string FPrefix; ///< "Font." while the properties of a sub-object are written.
    TComponent* FRootAncestor = nullptr;
    TComponent* FLookupAncestor = nullptr; ///< The same for FLookupRoot.
    bool FIsInherited = false;             ///< The component being written is there when its form is read.
    int FNesting = 0;
    TMode FMode = TMode::Kept;
    TFormNumbers FNumbers = TFormNumbers::Plain;
    std::vector<size_t>* FPropertyStarts = nullptr; ///< Where the properties of an instance begin.
    std::unordered_map<const TComponent*, std::vector<TComponent*>> FStraysIn; ///< By the one inside which they stood.
    std::unordered_set<TComponent*> FStrays;

    TFindAncestorEvent FOnFindAncestor;
};

/// While one of these lives, readers leave `Loaded` to it: several forms read one over the other, as an inherited form
/// is, are told once, when everything is there. They nest.
class TGlobalLoading {
public:
    TGlobalLoading();
    TGlobalLoading(const TGlobalLoading&) = delete;
    TGlobalLoading& operator=(const TGlobalLoading&) = delete;
    ~TGlobalLoading();

    /// Runs `Loaded` on each component that was read, once, in the order in which they were completed last.
    void NotifyLoaded();

private:
    friend class TReader;
    TGlobalLoading* FOuter;
    std::unique_ptr<detail::TLiveComponents> FLoaded;
    std::unique_ptr<detail::TLiveComponents> FKeeping; ///< Roots that a reader read which keeps what it does not know.
    void (*FNoteLoaded)(TComponent& root) = nullptr;
};

// --- Forms as resources

/// Reads the header of a form resource and returns the size of the form behind it. @throws EInvalidImage
uint32_t ReadResHeader(TStream& stream);
/// Writes the header of a resource of that name (in upper case) and size.
void WriteResHeader(TStream& stream, std::string_view name, uint32_t size);

} // namespace kx
