#include "printing/CupsPrinters.h"

#include <cups/cups.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <strings.h>
#include <utility>

namespace quillmere {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto ListStaysFresh = std::chrono::seconds(5);
/// How long the spooler may take to answer a question about its printers.
constexpr auto QuestionPatience = std::chrono::seconds(5);
/// While the spooler is silent the windows are looked after so often, in seconds.
constexpr double IdleStep = 0.1;

/// A conversation with the spooler that ends at a time.
class Conversation {
public:
    Conversation(std::chrono::milliseconds patience, const std::function<void()>& idle)
        : idle(idle), deadline(Clock::now() + patience)
    {
        // Nobody is asked for a password, least of all on a terminal.
        cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                           nullptr);
        http = httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1,
                            static_cast<int>(patience.count()), nullptr);
        if (http != nullptr)
            httpSetTimeout(http, IdleStep, &Conversation::Waited, this);
    }
    ~Conversation() { httpClose(http); }
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;

    http_t* Http() const { return http; }
    bool IsOver() const { return Clock::now() >= deadline; }

private:
    static int Waited(http_t*, void* self)
    {
        const auto* conversation = static_cast<Conversation*>(self);
        if (conversation->idle)
            conversation->idle();
        return conversation->IsOver() ? 0 : 1;
    }

    const std::function<void()>& idle;
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
    ~Options() { cupsFreeOptions(Count, List); }
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
    options.Set("media", "iso_a4_210x297mm");
    options.Set("print-scaling", "none");
    if (request.duplex == 1)
        options.Set("sides", CUPS_SIDES_ONE_SIDED);
    else if (request.duplex == 2)
        options.Set("sides", CUPS_SIDES_TWO_SIDED_PORTRAIT);
}

/// Hands the file over as the only document of a job. False if it did not get there whole.
bool SendJob(const Conversation& conversation, cups_dest_t& destination, const PrintRequest& request, int& job)
{
    http_t* const http = conversation.Http();
    const std::unique_ptr<cups_dinfo_t, decltype(&cupsFreeDestInfo)> information(cupsCopyDestInfo(http, &destination),
                                                                                 &cupsFreeDestInfo);
    if (information == nullptr)
        return false;
    Options options;
    SetOptions(options, destination, request);
    const char* title = request.documentName.c_str();
    if (cupsCreateDestJob(http, &destination, information.get(), &job, title, options.Count, options.List) >
        IPP_STATUS_OK_EVENTS_COMPLETE)
        return false;
    constexpr int isLast = 1;
    if (cupsStartDestDocument(http, &destination, information.get(), job, title, CUPS_FORMAT_PDF, 0, nullptr, isLast) !=
        HTTP_STATUS_CONTINUE)
        return false;
    constexpr std::size_t most = 65536;
    for (std::string_view rest = request.pdf; !rest.empty();) {
        const std::string_view piece = rest.substr(0, most);
        rest.remove_prefix(piece.size());
        if (cupsWriteRequestData(http, piece.data(), piece.size()) != HTTP_STATUS_CONTINUE)
            return false;
    }
    return cupsFinishDestDocument(http, &destination, information.get()) <= IPP_STATUS_OK_EVENTS_COMPLETE;
}

/// Takes back a job that did not get to the spooler whole.
void CancelJob(const std::string& printer, int job)
{
    const std::function<void()> noIdle;
    const Conversation conversation(std::chrono::seconds(1), noIdle);
    if (conversation.Http() != nullptr)
        cupsCancelJob2(conversation.Http(), printer.c_str(), job, 0);
}

} // namespace

CupsPrinters::CupsPrinters(std::function<void()> idle) : idle(std::move(idle))
{
}

void CupsPrinters::Read()
{
    printers.clear();
    const Conversation conversation(QuestionPatience, idle);
    if (conversation.Http() == nullptr)
        return;
    std::string standard;
    for (const cups_dest_t& destination : Destinations(conversation.Http())) {
        if (destination.is_default != 0)
            standard = destination.name;
        if (destination.instance == nullptr)
            printers.push_back(FactsOf(destination));
    }
    // Where the user has saved options of a printer, the list does not mark the spooler's own default one.
    if (const char* named = standard.empty() ? cupsGetDefault2(conversation.Http()) : nullptr)
        standard = named;
    for (const std::string& first : {standard, preferred})
        std::stable_partition(printers.begin(), printers.end(),
                              [&](const PrinterFacts& printer) { return printer.name == first; });
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
    httpAssembleURIf(HTTP_URI_CODING_ALL, address.data(), static_cast<int>(address.size()), scheme, nullptr,
                     isLocal ? "localhost" : std::string(server).c_str(), ippPort(), "/printers/%s",
                     std::string(printer).c_str());
    return address.data();
}

void CupsPrinters::Prefer(std::string_view name)
{
    preferred = name;
    isFresh = false;
}

PrintOutcome CupsPrinters::Print(const PrintRequest& request)
{
    const Conversation conversation(request.patience, idle);
    if (conversation.Http() == nullptr)
        return conversation.IsOver() ? PrintOutcome::NotReady : PrintOutcome::PrinterUnreachable;
    int job = 0;
    const Destinations destinations(conversation.Http());
    cups_dest_t* const destination = destinations.Find(request.printer);
    if (destination != nullptr && SendJob(conversation, *destination, request, job))
        return PrintOutcome::Sent;
    isFresh = false;
    if (job > 0)
        CancelJob(request.printer, job);
    return conversation.IsOver() ? PrintOutcome::NotReady : PrintOutcome::PrinterUnreachable;
}

} // namespace quillmere
