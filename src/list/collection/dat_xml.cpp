// The XML form of databases, also as emulators of several machines write it.
#include <algorithm>
#include <cstring>
#include <iterator>

#include <expat.h>

#include "list/collection/dat_collector.h"

namespace bw {
namespace {

// A tag or a comment; expat keeps as much in memory until it has its end.
constexpr uint64_t kLongestToken = 4 << 20;  // bytes
constexpr size_t kNamesDepth = 4;            // of a description in a game in a list of a list
constexpr size_t kLongestText = 4096;        // bytes of a description
// Of a document's own declarations of attributes that have values when they aren't written. expat
// goes through all of an element's for each such element.
constexpr size_t kMostDefaults = 256;

constexpr std::string_view kRoots[] = {"datafile", "softwarelist", "softwarelists", "mame"};

std::string_view Attribute(const char** attributes, std::string_view name) {
    for (; *attributes != nullptr; attributes += 2) {
        if (name == *attributes) return attributes[1];
    }
    return {};
}

class XmlReader : public DatReader {
  public:
    explicit XmlReader(DatCollector& collector)
        : collector_(collector), parser_(XML_ParserCreate(nullptr)) {
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), &XmlReader::OnStart, &XmlReader::OnEnd);
        // No external entity is ever read, since nothing here opens one. Those that a document
        // declares itself, which could unfold to gigabytes, are refused at their declaration, so
        // expat's own limit to unfolding isn't reached.
        XML_SetEntityDeclHandler(parser_.get(), &XmlReader::OnEntity);
        XML_SetAttlistDeclHandler(parser_.get(), &XmlReader::OnDefault);
    }

    std::optional<DatProblem> Feed(std::span<const char> bytes, bool last) override {
        fed_ += bytes.size();
        const XML_Status status =
            XML_Parse(parser_.get(), bytes.data(), static_cast<int>(bytes.size()), last ? 1 : 0);
        if (status != XML_STATUS_OK) return problem_.value_or(Damaged());
        // Nothing is told of a piece that only lengthens a token.
        const XML_Index done = XML_GetCurrentByteIndex(parser_.get());
        if (done >= 0) done_ = static_cast<uint64_t>(done);
        if (fed_ - std::min(fed_, done_) > kLongestToken) return Damaged();
        return std::nullopt;
    }

    uint64_t Line() const override { return XML_GetCurrentLineNumber(parser_.get()); }

  private:
    struct Freed {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    enum class Text : uint8_t { kNone, kName, kDescription, kTitle };

    DatProblem Damaged() const { return {.kind = DatProblem::Kind::kDamaged, .line = Line()}; }

    void Stop(DatProblem problem) {
        if (!problem_) problem_ = std::move(problem);
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    static void XMLCALL OnStart(void* self, const char* name, const char** attributes) {
        static_cast<XmlReader*>(self)->Start(name, attributes);
    }
    static void XMLCALL OnEnd(void* self, const char* name) {
        static_cast<XmlReader*>(self)->End(name);
    }
    static void XMLCALL OnText(void* self, const char* text, int length) {
        std::string& kept = static_cast<XmlReader*>(self)->text_;
        const size_t room = kLongestText - std::min(kept.size(), kLongestText);
        kept.append(text, std::min(static_cast<size_t>(length), room));
    }
    static void XMLCALL OnEntity(void* self, const char*, int, const char*, int, const char*,
                                 const char*, const char*, const char*) {
        auto* const reader = static_cast<XmlReader*>(self);
        reader->Stop(reader->Damaged());
    }
    static void XMLCALL OnDefault(void* self, const char*, const char*, const char*,
                                  const char* value, int) {
        auto* const reader = static_cast<XmlReader*>(self);
        if (value != nullptr && ++reader->defaults_ > kMostDefaults) {
            reader->Stop(reader->Damaged());
        }
    }

    void Start(const char* name, const char** attributes) {
        if (++depth_ == 1) {
            Root(name, attributes);
        } else if (depth_ > kDatDepth) {
            Stop(Damaged());
        } else if (std::strcmp(name, "rom") == 0) {
            if (inGame_) collector_.AddRom(Attribute(attributes, "crc"));
        } else if (depth_ <= kNamesDepth) {
            BeginOther(name, attributes);
        }
    }

    // Games and the header.
    void BeginOther(std::string_view name, const char** attributes) {
        if (name == "game" || name == "machine" || name == "software") {
            inGame_ = true;
            titled_ = name == "software";
            collector_.BeginGame(Attribute(attributes, "name"));
        } else if (name == "header") {
            inHeader_ = true;
        } else if (name == "softwarelist") {
            collector_.SetName(Attribute(attributes, "description"));
        } else if (inHeader_ && (name == "name" || name == "description")) {
            Keep(name == "name" ? Text::kName : Text::kDescription);
        }
        // In such lists a name is a code, and this the name; it comes before the files.
        if (inGame_ && titled_ && name == "description") Keep(Text::kTitle);
    }

    void Root(std::string_view name, const char** attributes) {
        if (std::ranges::find(kRoots, name) == std::end(kRoots)) {
            Stop({.kind = DatProblem::Kind::kNoDatabase});
        }
        collector_.SetName(Attribute(attributes, "description"));
    }

    void Keep(Text what) {
        kept_ = what;
        text_.clear();
        XML_SetCharacterDataHandler(parser_.get(), &XmlReader::OnText);
    }

    void End(const char* name) {
        if (kept_ != Text::kNone) EndText();
        --depth_;
        if (depth_ > 2 || (!inGame_ && !inHeader_)) return;
        const std::string_view ended = name;
        if (ended == "header") inHeader_ = false;
        if (ended == "game" || ended == "machine" || ended == "software") inGame_ = false;
    }

    void EndText() {
        XML_SetCharacterDataHandler(parser_.get(), nullptr);
        if (kept_ == Text::kName) collector_.SetName(text_);
        if (kept_ == Text::kDescription) collector_.SetDescription(text_);
        if (kept_ == Text::kTitle && !text_.empty()) collector_.BeginGame(text_);
        kept_ = Text::kNone;
    }

    DatCollector& collector_;
    std::unique_ptr<XML_ParserStruct, Freed> parser_;
    std::optional<DatProblem> problem_;
    uint64_t fed_ = 0;   // bytes
    uint64_t done_ = 0;  // bytes up to the token that hasn't ended yet
    size_t depth_ = 0;
    size_t defaults_ = 0;
    bool inGame_ = false;
    bool inHeader_ = false;
    bool titled_ = false;  // the description names the game
    Text kept_ = Text::kNone;
    std::string text_;
};

}  // namespace

std::unique_ptr<DatReader> MakeDatXmlReader(DatCollector& collector) {
    return std::make_unique<XmlReader>(collector);
}

}  // namespace bw
