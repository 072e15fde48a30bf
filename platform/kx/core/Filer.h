#pragma once

#include "kx/core/Collections.h"
#include "kx/core/Components.h"
#include "kx/core/GlobalReferences.h"
#include "kx/core/Streams.h"

#include <array>
#include <bit>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace kx {

/// The type byte in front of every value of a binary form.
enum TValueType : uint8_t {
    vaNull, ///< No value; also the end of a list, of properties and of components.
    vaList,
    vaInt8,
    vaInt16,
    vaInt32,
    vaExtended, ///< Ten bytes: sign, exponent and 64 bits of mantissa. Read, never written.
    vaString,   ///< A length byte, then characters of the ANSI code page.
    vaIdent,    ///< A length byte, then a name.
    vaFalse,
    vaTrue,
    vaBinary,  ///< A length of 32 bits, then bytes.
    vaSet,     ///< Names, each behind a length byte; an empty one ends the set.
    vaLString, ///< A length of 32 bits, then characters of the ANSI code page.
    vaNil,
    vaCollection,
    vaSingle,
    vaCurrency, ///< Ten-thousandths, as a 64-bit integer.
    vaDate,     ///< Days, as a double.
    vaWString,  ///< A length of 32 bits, counted in units, then UTF-16.
    vaInt64,
    vaUTF8String, ///< A length of 32 bits, then UTF-8.
    vaDouble
};

enum TFilerFlag : uint8_t {
    ffInherited, ///< Stands in an ancestor form; its values are read over the existing component.
    ffChildPos,  ///< The component's position among its parent's children follows.
    ffInline     ///< A component that brings components of its own, read from another form.
};
using TFilerFlags = TSet<TFilerFlag>;

/// How deep components, collections and lists may nest in a form file, all counted together.
inline constexpr int MaxFormNesting = 128;

/// The longest class name of a component: longer ones would look like a prefix byte in the binary form.
inline constexpr size_t MaxFormClassName = 0xEF;

/// Strings of a form file are Unicode, those of a component are in the process's ANSI code page. The two conversions
/// are installed once, at start-up; until then, and with null, the ANSI code page is taken to be UTF-8.
using TFormTextConversion = std::string (*)(std::string_view text);
void SetFormTextCodec(TFormTextConversion utf8ToAnsi, TFormTextConversion ansiToUtf8);
/// Text of a form file as the components hold it.
std::string FormTextToAnsi(std::string_view utf8);
/// The way back. Always valid UTF-8: a byte that is no part of a character stands for the character of its number.
std::string AnsiToFormText(std::string_view ansi);

class TFormLines;

namespace detail {

struct TKeptProperty;

/// The unsigned integer of a number's size.
template <class T>
using TBitsOf = std::conditional_t<
    sizeof(T) == 1, uint8_t,
    std::conditional_t<sizeof(T) == 2, uint16_t, std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>>>;

template <class T> T FromBytes(const std::array<unsigned char, sizeof(T)>& bytes) {
    uint64_t bits = 0;
    for (size_t i = sizeof(T); i-- > 0;) {
        bits = bits << 8 | bytes[i];
    }
    return std::bit_cast<T>(static_cast<TBitsOf<T>>(bits));
}

template <class T> std::array<unsigned char, sizeof(T)> ToBytes(T value) {
    std::array<unsigned char, sizeof(T)> bytes{};
    const uint64_t bits = std::bit_cast<TBitsOf<T>>(value);
    for (size_t i = 0; i < sizeof(T); ++i) {
        bytes[i] = static_cast<unsigned char>(bits >> (8 * i));
    }
    return bytes;
}

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
    /// References are set when everything is there. A name is looked up in the form, then as the form's own ("Owner"
    /// also means the form), then by `FindGlobalComponent`; a reference that nobody knows is null, and waits: see
    /// GlobalReferences.h. `Loaded` runs at the end, in the order in which the components were completed: children
    /// before their parent, the root last. When anything fails, the components that were created are freed again.
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
    void ReadListBegin();
    void ReadListEnd();
    bool EndOfList();       ///< True in front of the end of a list.
    TValueType NextValue(); ///< Type of the next value, which stays unread.
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
    int64_t ReadOrdinal(const TPropInfo& property);
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
class TWriter : public TFiler {
public:
    /// The stream outlives the writer. What is written reaches it by `FlushBuffer`.
    explicit TWriter(TStream& stream) : FStream(stream) {}

    /// Writes a whole form with its signature and flushes.
    /// @throws EWriteError for a form that could not be read again.
    void WriteRootComponent(TComponent& root) { WriteDescendent(root, nullptr); }
    /// The same; of what `ancestor` has too, just the differences. Null: no ancestor.
    void WriteDescendent(TComponent& root, TComponent* ancestor);

    void DefineProperty(std::string_view name, const TReaderProc& read, const TWriterProc& write,
                        bool hasData) override;
    void DefineBinaryProperty(std::string_view name, const TStreamProc& read, const TStreamProc& write,
                              bool hasData) override;

    // --- Values

    void WriteBoolean(bool value);
    void WriteChar(char value);
    void WriteInteger(int64_t value); ///< In the smallest integer type that holds it.
    void WriteFloat(double value);
    void WriteString(std::string_view ansi);
    void WriteIdent(std::string_view name); ///< "True", "False", "nil" and "Null" become their own types.
    void WriteSet(const TEnumInfo& elements, uint32_t bits);
    void WriteListBegin() { WriteValue(vaList); }
    void WriteListEnd() { WriteValue(vaNull); }
    void WriteCollection(const TCollection& collection); ///< With its type byte.
    void WriteBinary(std::string_view bytes);

    // --- Parts of the format

    void WriteSignature();
    void WritePrefix(TFilerFlags flags, int childPos);
    void WriteValue(TValueType type) { FBuffer.push_back(static_cast<char>(type)); }
    void WriteStr(std::string_view text);  ///< Characters behind a length byte. @throws EWriteError beyond 255.
    void WriteText(std::string_view utf8); ///< A string value.
    void Write(const void* data, size_t count) { FBuffer.append(static_cast<const char*>(data), count); }
    template <class T> void WriteNumber(T value) { ///< The bytes of a number, lowest first.
        const auto bytes = detail::ToBytes(value);
        Write(bytes.data(), bytes.size());
    }
    size_t Size() const { return FBuffer.size(); } ///< Bytes that wait to be flushed.
    void FlushBuffer();

    /// Writes header, properties and inner components of `component`; what `TComponent::WriteState` does.
    void WriteData(TComponent& component);

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

    TStream& FStream;
    std::string FBuffer;
    std::string FPrefix; ///< "Font." while the properties of a sub-object are written.
    TComponent* FRootAncestor = nullptr;
    TComponent* FLookupAncestor = nullptr; ///< The same for FLookupRoot.
    bool FIsInherited = false;             ///< The component being written is there when its form is read.
    int FNesting = 0;
    TMode FMode = TMode::Kept;
    std::vector<size_t>* FPropertyStarts = nullptr;                 ///< Where the properties of an instance begin.
    std::vector<std::pair<TComponent*, const TComponent*>> FStrays; ///< Each with the one inside which it stood.

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
