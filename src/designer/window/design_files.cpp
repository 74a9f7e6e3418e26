#include "designer/window/design_files.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "designer/window/design_samples.h"
#include "designer/window/dropped_parts.h"
#include "designer/window/file_rows.h"
#include "designer/window/last_design_file.h"
#include "designer/window/sample_dialog.h"
#include "language/problem_text.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/paths.h"
#include "support/text.h"

namespace bw {
namespace {

constexpr std::string_view kPicture = "png";

bool IsWhole(DesignPart part) {
    return part == DesignPart::kDesign || part == DesignPart::kVideoMemory2000 ||
           part == DesignPart::kVideoMemory2C00;
}

std::vector<FileType> FileTypes(std::span<const PartType> types) {
    std::vector<FileType> fileTypes;
    for (const PartType& type : types)
        fileTypes.push_back({std::u16string(type.name), std::string(type.extension)});
    return fileTypes;
}

uint64_t SizeOf(const std::filesystem::path& file) {
    return FileSize(file).ValueOr(0);
}

}  // namespace

template <typename Ask>
auto DesignFiles::Asked(Ask ask) -> std::optional<decltype(ask())> {
    const std::weak_ptr<Open> open = open_;
    ++asking_;
    auto answer = ask();
    if (open.expired()) return std::nullopt;
    --asking_;
    return answer;
}

std::function<void()> DesignFiles::WhileOpen(std::function<void()> work) const {
    return [open = std::weak_ptr<Open>(open_), work = std::move(work)] {
        if (!open.expired()) work();
    };
}

Shift DesignFiles::ShiftNow() const {
    return host_.Gestures().ShiftDown() ? Shift::kDown : Shift::kUp;
}

void DesignFiles::Tell(TextId format, std::u16string_view what) {
    host_.Tell(FormatText(LoadText(format, host_.CurrentLanguage()), what));
}

bool DesignFiles::ShowProblem(const Diagnostic& problem) {
    return Asked([&] {
               return host_.Dialogs().Message(
                   FullText(problem), LoadText(TextId::kErrorTitle, host_.CurrentLanguage()),
                   MessageButtons::kConfirm);
           })
        .has_value();
}

std::optional<FileChoice> DesignFiles::AskFile(TextId title, DesignPart part, FileQuestion question,
                                               bool toOpen) {
    if (asking_ != 0) return std::nullopt;
    const Language language = host_.CurrentLanguage();
    question.title = FormatText(LoadText(title, language), LoadText(PartName(part), language));
    question.start = LastDesignFolder(host_.Store());
    auto choice =
        Asked([&] {
            UserDialogs& dialogs = host_.Dialogs();
            return toOpen ? dialogs.AskFileToOpen(question) : dialogs.AskFileToSave(question);
        }).value_or(std::nullopt);
    if (choice) KeepLastDesignFile(host_.Store(), choice->path);
    return choice;
}

void DesignFiles::Load(int id) {
    const FileRow* row = RowOfLoad(id);
    if (row == nullptr) return;
    const Shift shift = ShiftNow();
    FileQuestion question;
    question.types = FileTypes(row->loadTypes);
    if (const auto last = lastTypes_.find(id); last != lastTypes_.end()) {
        question.type = last->second;
    }
    const auto choice =
        AskFile(TextId::kLoadPart, row->loadTypes.front().part, std::move(question), true);
    if (!choice) return;
    lastTypes_[id] = choice->type;
    ReadPart({row->loadTypes[choice->type].part, choice->path, shift}, [] {});
}

// The dialogs begin with the first type each time; those that remember theirs have only one.
void DesignFiles::Save(int id) {
    const FileRow* row = RowOfSave(id);
    if (row == nullptr) return;
    const Shift shift = ShiftNow();
    FileQuestion question;
    question.types = FileTypes(row->saveTypes);
    question.name = name_;
    const auto choice =
        AskFile(TextId::kSavePart, row->saveTypes.front().part, std::move(question), false);
    if (choice) WritePart({row->saveTypes[choice->type].part, choice->path, shift});
}

void DesignFiles::ReadPart(const Job& job, const std::function<void()>& then) {
    using Bytes = std::vector<uint8_t>;
    // Empty if the task couldn't run, which the tasks tell.
    const auto read = std::make_shared<std::optional<FileResult<Bytes>>>();
    host_.Tasks().StartFreeTask(
        [read, job](TaskControl&) { *read = ReadFile(job.file, LargestFile(job.part)); },
        WhileOpen([this, read, job, then] {
            FileResult<Bytes>* bytes = *read ? &**read : nullptr;
            if (bytes != nullptr && *bytes) {
                const auto taken = [this, job] {
                    if (IsWhole(job.part)) Name(job.file);
                    Tell(TextId::kLoaded, PathText(job.file.filename()));
                };
                TakePart(job, std::move(**bytes), taken, then);
                return;
            }
            const bool stays = bytes == nullptr || ShowProblem(FileDiagnostic(
                                                       bytes->Problem(), host_.CurrentLanguage()));
            if (stays) then();
        }));
}

void DesignFiles::TakePart(const Job& job, std::vector<uint8_t> bytes, std::function<void()> taken,
                           const std::function<void()>& then) {
    host_.WhenIdle(WhileOpen([this, job, bytes = std::move(bytes), taken = std::move(taken), then] {
        // Tried out first: a step is opened for what is good alone.
        WorkingCopy copy = host_.Session().Copy();
        auto loaded = LoadPart(job.part, bytes, job.shift, copy, host_.CurrentLanguage());
        if (auto* problem = std::get_if<Diagnostic>(&loaded)) {
            problem->place.file = PathText(job.file);
            if (!ShowProblem(*problem)) return;
        } else {
            host_.Run(
                [copy = std::move(copy), stale = std::get<Views>(loaded)](WorkingCopy& target) {
                    target = copy;
                    return stale;
                });
            taken();
        }
        then();
    }));
}

void DesignFiles::WritePart(const Job& job) {
    ++saves_;
    host_.WhenIdle(WhileOpen([this, job] {
        const auto snapshot = std::make_shared<const WorkingCopy>(host_.Session().Copy());
        // Empty if the task couldn't run, which the tasks tell.
        const auto outcome = std::make_shared<std::optional<DesignProblem>>();
        const auto ended = std::make_shared<std::promise<void>>();
        const auto work = [=, before = std::exchange(lastSave_, ended->get_future().share()),
                           language = host_.CurrentLanguage()](TaskControl&) {
            if (before.valid()) before.wait();
            *outcome = SavePart(job.file, job.part, job.shift, *snapshot, language);
            ended->set_value();
        };
        host_.Tasks().StartFreeTask(
            work, WhileOpen([this, job, outcome] {
                if (*outcome) EndSave(job, **outcome);
                if (--saves_ != 0) return;
                for (const std::function<void()>& waiting : std::exchange(waiting_, {}))
                    waiting();
            }));
    }));
}

bool DesignFiles::EndSave(const Job& job, const DesignProblem& problem) {
    if (problem) return ShowProblem(*problem);
    if (IsWhole(job.part)) Name(job.file);
    Tell(TextId::kSaved, PathText(job.file));
    return true;
}

void DesignFiles::WhenSaved(std::function<void()> work) {
    if (saves_ == 0) {
        work();
    } else {
        waiting_.push_back(std::move(work));
    }
}

void DesignFiles::GiveUp() {
    open_ = std::make_shared<Open>();
    asking_ = 0;
    saves_ = 0;
    waiting_.clear();
    drops_.clear();
    dropping_ = false;
}

void DesignFiles::Name(const Path& file) {
    name_ = PathText(file.stem());
    if (named) named(file);
}

void DesignFiles::OpenSample() {
    if (asking_ != 0) return;
    const auto chosen = Asked([&] {
                            return CSampleDialog::Ask(&host_.Window(), host_.Session().Copy(),
                                                      host_.CurrentLanguage());
                        }).value_or(std::nullopt);
    if (!chosen) return;
    const DesignSample& sample = DesignSamples()[*chosen];
    const auto taken = [this, name = sample.name] {
        Name({});
        Tell(TextId::kSampleOpened, LoadText(name, host_.CurrentLanguage()));
    };
    TakePart({DesignPart::kDesign, {}, Shift::kUp}, {sample.bytes.begin(), sample.bytes.end()},
             taken, [] {});
}

void DesignFiles::Drop(std::optional<Control> view, const std::vector<Path>& files, Shift shift) {
    std::vector<Dropped> dropped;
    for (const Path& file : files) {
        const bool picture = importPicture && HasExtension(file, kPicture);
        dropped.push_back({file, view, shift, picture, DroppedParts(file, SizeOf(file), view)});
    }
    // What is told of these isn't covered by what the others come to.
    std::ranges::stable_partition(
        dropped, [](const Dropped& one) { return one.picture || !one.parts.empty(); });
    std::ranges::move(dropped, std::back_inserter(drops_));
    if (!std::exchange(dropping_, true)) DropNext();
}

void DesignFiles::DropNext() {
    while (!drops_.empty()) {
        const Dropped dropped = std::move(drops_.front());
        drops_.pop_front();
        const std::weak_ptr<Open> open = open_;
        if (dropped.picture) {
            importPicture(dropped.file, dropped.view);
        } else if (dropped.parts.empty()) {
            Tell(TextId::kNoKindOfFile, PathText(dropped.file.filename()));
        } else if (const auto part = ChoosePart(dropped)) {
            ReadPart({*part, dropped.file, dropped.shift}, [this] { DropNext(); });
            return;
        }
        if (open.expired()) return;
    }
    dropping_ = false;
}

std::optional<DesignPart> DesignFiles::ChoosePart(const Dropped& dropped) {
    if (dropped.parts.size() == 1) return dropped.parts.front();
    const Language language = host_.CurrentLanguage();
    std::vector<std::u16string> answers;
    for (const DesignPart part : dropped.parts)
        answers.push_back(LoadText(PartName(part), language));
    const std::u16string text =
        FormatText(LoadText(TextId::kLoadDroppedAs, language), PathText(dropped.file.filename()));
    const auto answer =
        Asked([&] {
            return host_.Dialogs().Choose(text, LoadText(TextId::kLoad, language), answers);
        }).value_or(std::nullopt);
    return answer ? std::optional(dropped.parts[*answer]) : std::nullopt;
}

}  // namespace bw
