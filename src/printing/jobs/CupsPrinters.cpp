#include "printing/jobs/CupsPrinters.h"

#include "printing/jobs/Cups.h"

#include <algorithm>
#include <array>
#include <future>
#include <memory>
#include <optional>
#include <strings.h>
#include <thread>
#include <utility>

namespace quillmere {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto ListStaysFresh = std::chrono::seconds(5);
/// How long the spooler may take to answer a question about its printers.
constexpr auto QuestionPatience = std::chrono::seconds(5);
/// How long it may take, in all, to tell what is left of a try that went wrong.
constexpr auto CheckPatience = std::chrono::seconds(5);
/// While the spooler is silent the windows are looked after so often.
constexpr auto IdleStep = std::chrono::milliseconds(50);
/// How often a request is tried, each time on a connection of its own, and the pause between two tries.
constexpr int Tries = 3;
constexpr auto Pause = std::chrono::milliseconds(200);
/// The sheet on which every document is printed.
constexpr auto Sheet = "iso_a4_210x297mm";

/// Does the work beside the caller's thread, which looks after the windows meanwhile. The library's own way of doing
/// that, a short time-out with a call-back, loses answers: where an answer's body comes later than the time-out after
/// its head, the library takes it for unreadable. A busy spooler's bodies do.
template<typename Work>
auto WhileIdling(const std::function<void()>& idle, Work work)
{
    auto result = std::async(std::launch::async, std::move(work));
    while (result.wait_for(IdleStep) != std::future_status::ready)
        if (idle)
            idle();
    return result.get();
}

/// A conversation with the spooler that ends at a time.
class Conversation {
public:
    explicit Conversation(Clock::time_point deadline) : deadline(deadline)
    {
        const auto patience = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (patience.count() <= 0)
            return;
        // Nobody is asked for a password, least of all on a terminal.
        cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                           nullptr);
        http = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                            static_cast<int>(patience.count()), nullptr);
        if (http != nullptr)
            httpSetTimeout(http, std::chrono::duration<double>(patience).count(), &Conversation::Waited, this);
    }
    ~Conversation() { httpClose(http); }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    http_t* Http() const { return http; }

private:
    static int Waited(http_t*, void* self)
    {
        return Clock::now() >= static_cast<const Conversation*>(self)->deadline ? 0 : 1;
    }

    Clock::time_point deadline;
    http_t* http = nullptr;
};

/// The spooler's list of printers.
class Destinations {
public:
    explicit Destinations(http_t* http) : count(cupsGetDests2(http, &list)) {}
    ~Destinations() { cupsFreeDests(count, list); }
    Destinations(const Destinations&) = delete;
    Destinations& operator=(const Destinations&) = delete;

    cups_dest_t* begin() const { return list; }
    cups_dest_t* end() const { return list + count; }
    cups_dest_t* Find(const std::string& name) const
    {
        const auto found = std::find_if(
            begin(), end(), [&](const cups_dest_t& other) { return other.instance == nullptr && name == other.name; });
        return found == end() ? nullptr : found;
    }

private:
    cups_dest_t* list = nullptr;
    int count = 0;
};

class Options {
public:
    Options() = default;
    ~Options()
    {
        if (List != nullptr) // otherwise the library may be missing
            cupsFreeOptions(Count, List);
    }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;
    void Set(const char* name, const std::string& value) { Count = cupsAddOption(name, value.c_str(), Count, &List); }

    int Count = 0;
    cups_option_t* List = nullptr;
};

std::string OptionOf(const cups_dest_t& destination, const char* name)
{
    const char* value = cupsGetOption(name, destination.num_options, destination.options);
    return value == nullptr ? std::string() : value;
}

PrinterFacts FactsOf(const cups_dest_t& destination)
{
    const std::string state = OptionOf(destination, "printer-state");
    return {.name = destination.name,
            .description = OptionOf(destination, "printer-info"),
            .location = OptionOf(destination, "printer-location"),
            .model = OptionOf(destination, "printer-make-and-model"),
            .state = state == std::to_string(IPP_PSTATE_STOPPED)      ? PrinterFacts::State::Stopped
                     : state == std::to_string(IPP_PSTATE_PROCESSING) ? PrinterFacts::State::Printing
                                                                      : PrinterFacts::State::Idle,
            .isAccepting = OptionOf(destination, "printer-is-accepting-jobs") != "false"};
}

/// Options that change which pages come, in what order, how many to a sheet or how large: the program decides that.
constexpr auto OptionsOfPages = std::to_array<std::string_view>({
    "page-ranges",
    "page-set",
    "outputorder",
    "page-delivery",
    "number-up",
    "number-up-layout",
    "booklet",
    "imposition-template",
    "fit-to-page",
    "fitplot",
    "scaling",
    "natural-scaling",
});

bool IsOptionOfPages(std::string_view name)
{
    return std::ranges::any_of(OptionsOfPages, [name](std::string_view other) {
        return name.size() == other.size() && strncasecmp(name.data(), other.data(), other.size()) == 0;
    });
}

void SetOptions(Options& options, const cups_dest_t& destination, const PrintRequest& request)
{
    // What the user has set for this printer holds, but for what the program itself decides.
    for (int at = 0; at < destination.num_options; ++at)
        if (!IsOptionOfPages(destination.options[at].name))
            options.Set(destination.options[at].name, destination.options[at].value);
    options.Set("copies", std::to_string(request.copies));
    // The pages are whole sheets: nothing is fitted, and no margin is added.
    options.Set("media", Sheet);
    options.Set("print-scaling", "none");
    if (request.duplex == 1)
        options.Set("sides", CUPS_SIDES_ONE_SIDED);
    else if (request.duplex == 2)
        options.Set("sides", CUPS_SIDES_TWO_SIDED_PORTRAIT);
}

struct IppDeleter {
    void operator()(ipp_t* ipp) const { ippDelete(ipp); }
};
using Ipp = std::unique_ptr<ipp_t, IppDeleter>;

/// What became of one try.
enum class Try {
    Sent,
    Refused, ///< by the spooler, which will do so again
    Lost     ///< the conversation broke off; whether something arrived is not known
};

/// True if the last request was answered, be it with a refusal.
bool WasAnswered()
{
    const ipp_status_t status = cupsLastError();
    return status != IPP_STATUS_ERROR_INTERNAL && status != IPP_STATUS_ERROR_SERVICE_UNAVAILABLE &&
           status != IPP_STATUS_ERROR_TIMEOUT && status != IPP_STATUS_ERROR_BUSY;
}

/// Hands the file over as the only document of a job.
Try SendJob(http_t* http, cups_dest_t& destination, const PrintRequest& request, int& job)
{
    // Where a connection breaks off while the document is on its way, the library keeps the status of the request
    // before.
    const auto failure = [] {
        return WasAnswered() && cupsLastError() > IPP_STATUS_OK_EVENTS_COMPLETE ? Try::Refused : Try::Lost;
    };
    const std::unique_ptr<cups_dinfo_t, void (*)(cups_dinfo_t*)> information(cupsCopyDestInfo(http, &destination),
                                                                             cupsFreeDestInfo);
    if (information == nullptr)
        return failure();
    Options options;
    SetOptions(options, destination, request);
    const char* title = request.documentName.c_str();
    if (cupsCreateDestJob(http, &destination, information.get(), &job, title, options.Count, options.List) >
        IPP_STATUS_OK_EVENTS_COMPLETE)
        return failure();
    constexpr int isLast = 1;
    if (cupsStartDestDocument(http, &destination, information.get(), job, title, CUPS_FORMAT_PDF, 0, nullptr, isLast) !=
        HTTP_STATUS_CONTINUE)
        return failure();
    constexpr std::size_t most = 65536;
    for (std::string_view rest = request.pdf; !rest.empty();) {
        const std::string_view piece = rest.substr(0, most);
        rest.remove_prefix(piece.size());
        if (cupsWriteRequestData(http, piece.data(), piece.size()) != HTTP_STATUS_CONTINUE)
            return failure();
    }
    return cupsFinishDestDocument(http, &destination, information.get()) <= IPP_STATUS_OK_EVENTS_COMPLETE ? Try::Sent
                                                                                                          : failure();
}

/// A job of this user's, as the spooler tells of it.
struct JobFacts {
    int number = 0;
    std::string name;
    int documents = 0;
    bool isOver = false;
};

/// This user's jobs for a printer that are not over, or the one job of the number. Nothing if the spooler does not say.
std::optional<std::vector<JobFacts>> ReadJobs(http_t* http, const std::string& printer, int number = 0)
{
    std::array<char, HTTP_MAX_URI> address{};
    httpAssembleURI(HTTP_URI_CODING_ALL, address.data(), static_cast<int>(address.size()), "ipp", nullptr, "localhost",
                    0, ("/printers/" + printer).c_str());
    ipp_t* question = ippNewRequest(number > 0 ? IPP_OP_GET_JOB_ATTRIBUTES : IPP_OP_GET_JOBS);
    ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_URI, "printer-uri", nullptr, address.data());
    if (number > 0)
        ippAddInteger(question, IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-id", number);
    else
        ippAddBoolean(question, IPP_TAG_OPERATION, "my-jobs", 1);
    ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_NAME, "requesting-user-name", nullptr, cupsUser());
    constexpr std::array<const char*, 4> wanted = {"job-id", "job-name", "job-state", "number-of-documents"};
    ippAddStrings(question, IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "requested-attributes", static_cast<int>(wanted.size()),
                  nullptr, wanted.data());
    const Ipp answer(cupsDoRequest(http, question, "/"));
    if (answer == nullptr || ippGetStatusCode(answer.get()) > IPP_STATUS_OK_EVENTS_COMPLETE)
        return std::nullopt;
    std::vector<JobFacts> jobs;
    bool isOpen = false; // a job's attributes are being read
    for (ipp_attribute_t* one = ippFirstAttribute(answer.get()); one != nullptr; one = ippNextAttribute(answer.get())) {
        const bool isOfJob = ippGetGroupTag(one) == IPP_TAG_JOB && ippGetName(one) != nullptr;
        if (isOfJob && !isOpen)
            jobs.emplace_back();
        isOpen = isOfJob;
        if (!isOfJob)
            continue;
        const std::string_view name = ippGetName(one);
        JobFacts& job = jobs.back();
        if (name == "job-id")
            job.number = ippGetInteger(one, 0);
        else if (name == "job-name")
            job.name = ippGetString(one, 0, nullptr);
        else if (name == "job-state")
            job.isOver = ippGetInteger(one, 0) == IPP_JSTATE_CANCELED || ippGetInteger(one, 0) == IPP_JSTATE_ABORTED;
        else if (name == "number-of-documents")
            job.documents = ippGetInteger(one, 0);
    }
    return jobs;
}

/// What was left of a try that did not end well.
enum class Remains {
    Document, ///< it is there after all
    Nothing,  ///< a job without a document, if there was one, has been taken back
    Unknown
};

/// Looks after what is left, on a connection of its own. Where the answer to the making of a job was lost, `job` is 0
/// and the job is known by its name.
Remains TakeBack(const PrintRequest& request, int job, Clock::time_point deadline)
{
    const Conversation conversation(deadline);
    if (conversation.Http() == nullptr)
        return Remains::Unknown;
    const auto jobs = ReadJobs(conversation.Http(), request.printer, job);
    if (!jobs)
        return Remains::Unknown;
    for (const JobFacts& found : *jobs) {
        if (job > 0 && found.documents > 0 && !found.isOver)
            return Remains::Document;
        if (found.documents > 0 || found.isOver || found.name != request.documentName)
            continue;
        if (cupsCancelJob2(conversation.Http(), request.printer.c_str(), found.number, 0) >
            IPP_STATUS_OK_EVENTS_COMPLETE)
            return Remains::Unknown;
    }
    return Remains::Nothing;
}

/// One try, on a connection of its own. A document that is at the spooler counts as sent, and no job without one is
/// left there.
Try SendOnce(const PrintRequest& request, Clock::time_point deadline)
{
    int job = 0;
    Try outcome = Try::Lost;
    {
        const Conversation conversation(deadline);
        if (conversation.Http() == nullptr)
            return Try::Lost;
        const Destinations destinations(conversation.Http());
        cups_dest_t* const destination = destinations.Find(request.printer);
        if (destination == nullptr)
            return WasAnswered() ? Try::Refused : Try::Lost;
        outcome = SendJob(conversation.Http(), *destination, request, job);
    }
    if (outcome == Try::Sent)
        return outcome;
    Remains remains = Remains::Unknown;
    const auto end = Clock::now() + CheckPatience;
    for (int check = 0; check < Tries && remains == Remains::Unknown && Clock::now() < end; ++check) {
        if (check > 0)
            std::this_thread::sleep_for(Pause);
        remains = TakeBack(request, job, end);
    }
    if (remains == Remains::Document)
        return Try::Sent;
    // While it is not known what is there nothing is sent again: never two copies of one document.
    return remains == Remains::Unknown ? Try::Refused : outcome;
}

PrintOutcome Send(const PrintRequest& request)
{
    const auto deadline = Clock::now() + request.patience;
    Try outcome = Try::Lost;
    for (int tried = 0; tried < Tries && outcome == Try::Lost && Clock::now() < deadline; ++tried) {
        if (tried > 0)
            std::this_thread::sleep_for(Pause);
        outcome = SendOnce(request, deadline);
    }
    if (outcome == Try::Sent)
        return PrintOutcome::Sent;
    return Clock::now() >= deadline ? PrintOutcome::NotReady : PrintOutcome::PrinterUnreachable;
}

/// All printers, the default one of the spooler first. Nothing if the conversation broke off.
std::optional<std::vector<PrinterFacts>> ReadPrinters()
{
    const Conversation conversation(Clock::now() + QuestionPatience);
    if (conversation.Http() == nullptr)
        return std::vector<PrinterFacts>();
    std::vector<PrinterFacts> printers;
    std::string standard;
    const Destinations destinations(conversation.Http());
    if (destinations.begin() == destinations.end() && !WasAnswered())
        return std::nullopt;
    for (const cups_dest_t& destination : destinations) {
        if (destination.is_default != 0)
            standard = destination.name;
        if (destination.instance == nullptr)
            printers.push_back(FactsOf(destination));
    }
    // Where the user has saved options of a printer, the list does not mark the spooler's own default one.
    if (const char* named = standard.empty() ? cupsGetDefault2(conversation.Http()) : nullptr)
        standard = named;
    std::stable_partition(printers.begin(), printers.end(),
                          [&](const PrinterFacts& printer) { return printer.name == standard; });
    return printers;
}

SheetEdge ReadEdge(const std::string& printer)
{
    const Conversation conversation(Clock::now() + QuestionPatience);
    if (conversation.Http() == nullptr)
        return {};
    const Destinations destinations(conversation.Http());
    cups_dest_t* const destination = destinations.Find(printer);
    if (destination == nullptr)
        return {};
    const std::unique_ptr<cups_dinfo_t, void (*)(cups_dinfo_t*)> information(
        cupsCopyDestInfo(conversation.Http(), destination), cupsFreeDestInfo);
    cups_size_t size{};
    if (information == nullptr || cupsGetDestMediaByName(conversation.Http(), destination, information.get(), Sheet,
                                                         CUPS_MEDIA_FLAGS_DEFAULT, &size) == 0)
        return {};
    const auto millimetres = [](int hundredths) { return hundredths / 100.0; };
    return {millimetres(size.left), millimetres(size.top), millimetres(size.right), millimetres(size.bottom)};
}

} // namespace

CupsPrinters::CupsPrinters(std::function<void()> idle) : idle(std::move(idle))
{
}

void CupsPrinters::Read()
{
    std::optional<std::vector<PrinterFacts>> found;
    for (int tried = 0; tried < Tries && !found; ++tried)
        found = WhileIdling(idle, &ReadPrinters);
    printers = std::move(found).value_or(std::vector<PrinterFacts>());
    std::stable_partition(printers.begin(), printers.end(),
                          [this](const PrinterFacts& printer) { return printer.name == preferred; });
}

const std::vector<PrinterFacts>& CupsPrinters::Printers()
{
    if (!isFresh || Clock::now() - read > ListStaysFresh) {
        Read();
        isFresh = true;
        read = Clock::now();
    }
    return printers;
}

std::vector<std::string> CupsPrinters::Names()
{
    std::vector<std::string> names;
    for (const PrinterFacts& printer : Printers())
        names.push_back(printer.name);
    return names;
}

std::string CupsPrinters::PageOf(std::string_view printer)
{
    const std::string_view server = cupsServer();
    const bool isLocal = server.empty() || server.front() == '/'; // a socket: its pages are on this machine
    const char* scheme = cupsEncryption() == HTTP_ENCRYPTION_ALWAYS ? "https" : "http";
    std::array<char, HTTP_MAX_URI> address{};
    httpAssembleURI(HTTP_URI_CODING_ALL, address.data(), static_cast<int>(address.size()), scheme, nullptr,
                    isLocal ? "localhost" : std::string(server).c_str(), ippPort(),
                    ("/printers/" + std::string(printer)).c_str());
    return address.data();
}

void CupsPrinters::Prefer(std::string_view name)
{
    preferred = name;
    isFresh = false;
}

PrintOutcome CupsPrinters::Print(const PrintRequest& request)
{
    const PrintOutcome outcome = WhileIdling(idle, [&request] { return Send(request); });
    if (outcome != PrintOutcome::Sent)
        isFresh = false;
    return outcome;
}

SheetEdge CupsPrinters::EdgeOf(const std::string& printer)
{
    return printer.empty() ? SheetEdge{} : WhileIdling(idle, [&printer] { return ReadEdge(printer); });
}

LibraryInUse SpoolerLibrary()
{
    // "CUPS/2.4.2 (Linux ...) IPP/2.1"
    const std::string_view agent = cupsUserAgent();
    const std::size_t begin = std::min(agent.find('/'), agent.size() - 1) + 1;
    return {"CUPS", std::string(agent.substr(begin, agent.find(' ', begin) - begin))};
}

} // namespace quillmere
