// SPDX-License-Identifier: MIT
// Lists of strings, whatever keeps them, and their texts.

#include "kx/core/Strings.h"

#include "kx/core/Filer.h"
#include "kx/core/Streams.h"
#include "kx/core/Updates.h"

#include <algorithm>

namespace kx {

namespace {

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

} // namespace

const TClass& TStrings::StaticClass() {
    static const TClassBuilder<TStrings> cls("TStrings", TPersistent::StaticClass());
    return cls.Class();
}

void TStrings::CheckIndex(int index) const {
    if (index < 0 || index >= Count()) {
        throw EStringListError(Format("List index out of bounds (%s)", {IntToStr(index)}));
    }
}

void TStrings::Put(int index, const std::string& text) {
    TObject* const object = GetObject(index);
    Delete(index);
    InsertObject(index, text, object);
}

TObject* TStrings::GetObject(int index) const {
    CheckIndex(index);
    return nullptr;
}

void TStrings::PutObject(int index, TObject*) { CheckIndex(index); }

int TStrings::Add(const std::string& text) {
    const int index = Count();
    Insert(index, text);
    return index;
}

int TStrings::AddObject(const std::string& text, TObject* object) {
    const int index = Add(text);
    PutObject(index, object);
    return index;
}

void TStrings::InsertObject(int index, const std::string& text, TObject* object) {
    Insert(index, text);
    PutObject(index, object);
}

void TStrings::AddStrings(const TStrings& strings) {
    AsOneUpdate(*this, [&] {
        const int count = strings.Count(); // the list may be this one
        for (int i = 0; i < count; ++i) {
            AddObject(strings.Get(i), strings.GetObject(i));
        }
    });
}

int TStrings::IndexOf(const std::string& text) const {
    for (int i = 0; i < Count(); ++i) {
        if (SameText(Get(i), text)) {
            return i;
        }
    }
    return -1;
}

void TStrings::Exchange(int a, int b) {
    const std::string textA = Get(a);
    TObject* const objectA = GetObject(a);
    const std::string textB = Get(b);
    TObject* const objectB = GetObject(b);
    AsOneUpdate(*this, [&] {
        Put(a, textB);
        PutObject(a, objectB);
        Put(b, textA);
        PutObject(b, objectA);
    });
}

void TStrings::Move(int from, int to) {
    CheckIndex(from);
    CheckIndex(to);
    if (from == to) {
        return;
    }
    const std::string text = Get(from);
    TObject* const object = GetObject(from);
    AsOneUpdate(*this, [&] {
        Delete(from);
        InsertObject(to, text, object);
    });
}

std::string TStrings::Text() const {
    std::string text;
    for (int i = 0; i < Count(); ++i) {
        text += Get(i);
        text += "\r\n";
    }
    return text;
}

void TStrings::SetText(std::string_view text) {
    AsOneUpdate(*this, [&] {
        Clear();
        while (!text.empty()) {
            const size_t end = std::min(text.find_first_of("\r\n"), text.size());
            Add(std::string(text.substr(0, end)));
            const size_t lineBreak = text.substr(end, 2) == "\r\n" ? 2 : 1;
            text.remove_prefix(std::min(end + lineBreak, text.size()));
        }
    });
}

std::string TStrings::CommaText() const {
    if (Count() == 1 && Get(0).empty()) {
        return "\"\""; // else it would read as an empty list
    }
    std::string result;
    for (int i = 0; i < Count(); ++i) {
        const std::string text = Get(i);
        result += i > 0 ? "," : "";
        bool plain = true;
        for (const char c : text) {
            plain = plain && !IsBlank(c) && c != '"' && c != ',';
        }
        if (plain) {
            result += text;
            continue;
        }
        result.push_back('"');
        for (const char c : text) {
            result.append(c == '"' ? 2 : 1, c);
        }
        result.push_back('"');
    }
    return result;
}

void TStrings::SetCommaText(std::string_view text) {
    AsOneUpdate(*this, [&] {
        Clear();
        size_t at = 0;
        const auto skipBlanks = [&] {
            while (at < text.size() && IsBlank(text[at])) {
                ++at;
            }
        };
        skipBlanks();
        while (at < text.size()) {
            std::string item;
            if (text[at] == '"') {
                for (++at; at < text.size(); ++at) {
                    if (text[at] == '"' && text.substr(at + 1, 1) != "\"") {
                        ++at;
                        break;
                    }
                    if (text[at] == '"') {
                        ++at; // of two quotes the second one stands
                    }
                    item.push_back(text[at]);
                }
            } else {
                while (at < text.size() && !IsBlank(text[at]) && text[at] != ',') {
                    item.push_back(text[at++]);
                }
            }
            Add(item);
            skipBlanks();
            if (at < text.size() && text[at] == ',') {
                ++at;
                skipBlanks();
                if (at == text.size()) {
                    Add({}); // behind a comma something follows, if only an empty text
                }
            }
        }
    });
}

std::string TStrings::Names(int index) const {
    const std::string text = Get(index);
    const size_t at = FindChar(text, '=');
    return at == std::string::npos ? std::string() : text.substr(0, at);
}

std::string TStrings::Values(const std::string& name) const {
    for (int i = 0; i < Count(); ++i) {
        const std::string text = Get(i);
        const size_t at = FindChar(text, '=');
        if (at != std::string::npos && SameText(std::string_view(text).substr(0, at), name)) {
            return text.substr(at + 1);
        }
    }
    return {};
}

void TStrings::SetValue(const std::string& name, const std::string& value) {
    int index = 0;
    while (index < Count() && (FindChar(Get(index), '=') == std::string::npos || !SameText(Names(index), name))) {
        ++index;
    }
    const bool known = index < Count();
    if (value.empty()) {
        if (known) {
            Delete(index);
        }
    } else if (known) {
        Put(index, name + "=" + value);
    } else {
        Add(name + "=" + value);
    }
}

bool TStrings::Equals(const TStrings& other) const {
    if (Count() != other.Count()) {
        return false;
    }
    for (int i = 0; i < Count(); ++i) {
        if (Get(i) != other.Get(i)) {
            return false;
        }
    }
    return true;
}

void TStrings::LoadFromStream(TStream& stream) {
    std::string text(static_cast<size_t>(std::max<int64_t>(stream.Size() - stream.Position(), 0)), '\0');
    stream.ReadBuffer(text.data(), text.size());
    SetText(text);
}

void TStrings::SaveToStream(TStream& stream) const {
    const std::string text = Text();
    stream.WriteBuffer(text.data(), text.size());
}

void TStrings::BeginUpdate() {
    if (FUpdateCount == 0) {
        SetUpdateState(true);
    }
    ++FUpdateCount;
}

void TStrings::EndUpdate() {
    if (--FUpdateCount == 0) {
        SetUpdateState(false);
    }
}

void TStrings::SetUpdateState(bool) {}

void TStrings::Assign(const TPersistent* source) {
    const auto* const other = dynamic_cast<const TStrings*>(source);
    if (!other) {
        TPersistent::Assign(source);
        return;
    }
    if (other == this) {
        return;
    }
    AsOneUpdate(*this, [&] {
        Clear();
        AddStrings(*other);
    });
}

void TStrings::DefineProperties(TFiler& filer) {
    const auto* const ancestor = dynamic_cast<const TStrings*>(filer.Ancestor());
    filer.DefineProperty(
        "Strings",
        [this](TReader& reader) {
            reader.ReadListBegin();
            AsOneUpdate(*this, [&] {
                Clear();
                while (!reader.EndOfList()) {
                    Add(reader.ReadString());
                }
                reader.ReadListEnd();
            });
        },
        [this](TWriter& writer) {
            writer.WriteListBegin();
            for (int i = 0; i < Count(); ++i) {
                writer.WriteString(Get(i));
            }
            writer.WriteListEnd();
        },
        ancestor ? !Equals(*ancestor) : Count() > 0);
}

} // namespace kx
