#include "PrivateSpooler.h"

#include <cups/cups.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fmt/format.h>
#include <fstream>
#include <memory>
#include <sstream>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace quillmere::test {

namespace {

constexpr auto Daemon = "/usr/sbin/cupsd";
constexpr auto StartPatience = std::chrono::seconds(15);
constexpr auto Step = std::chrono::milliseconds(50);

std::string OutputOf(const std::string& command)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), &pclose);
    std::string output;
    if (pipe == nullptr)
        return output;
    std::array<char, 4096> buffer{};
    for (std::size_t got = 0; (got = std::fread(buffer.data(), 1, buffer.size(), pipe.get())) > 0;)
        output.append(buffer.data(), got);
    return output;
}

std::string Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos
               ? std::string()
               : std::string(text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1));
}

/// What the spooler tells of a job, in its own words.
std::map<std::string, std::string> AttributesOf(int job)
{
    std::map<std::string, std::string> attributes;
    ipp_t* question = ippNewRequest(IPP_OP_GET_JOB_ATTRIBUTES);
    ippAddString(question, IPP_TAG_OPERATION, IPP_TAG_URI, "job-uri", nullptr,
                 fmt::format("ipp://localhost/jobs/{}", job).c_str());
    ipp_t* answer = cupsDoRequest(CUPS_HTTP_DEFAULT, question, "/");
    for (ipp_attribute_t* one = ippFirstAttribute(answer); one != nullptr; one = ippNextAttribute(answer)) {
        std::string text(ippAttributeString(one, nullptr, 0) + 1, '\0');
        ippAttributeString(one, text.data(), text.size());
        text.pop_back();
        if (ippGetName(one) != nullptr)
            attributes[ippGetName(one)] = text;
    }
    ippDelete(answer);
    return attributes;
}

void Write(const std::filesystem::path& file, const std::string& text)
{
    std::ofstream stream(file, std::ios::trunc);
    stream << text;
}

} // namespace

PrivateSpooler::PrivateSpooler()
{
    for (const char* program : {Daemon, "/usr/sbin/lpadmin", "/usr/bin/pdftotext"})
        if (access(program, X_OK) != 0) {
            missing = fmt::format("{} is not installed", program);
            return;
        }
    setenv("HOME", folder.path.c_str(), 1);
    setenv("CUPS_SERVER", Socket().c_str(), 1);
    cupsSetServer(Socket().c_str()); // this thread may have asked another one before
    for (const char* variable : {"PRINTER", "LPDEST"})
        unsetenv(variable);
    if (!Start())
        missing =
            fmt::format("{} does not start here: {}", Daemon, OutputOf("tail -n 3 " + (folder / "error").string()));
}

bool PrivateSpooler::Start()
{
    for (const char* part : {"root", "spool", "cache", "state", "tmp"})
        std::filesystem::create_directories(folder / part);
    Write(folder / "cupsd.conf",
          fmt::format("Listen {}\nLogLevel warn\nBrowsing Off\nDefaultAuthType None\n"
                      "WebInterface No\nLimitRequestBody {}\nPreserveJobFiles Yes\nPreserveJobHistory Yes\nMaxJobs 0\n"
                      "DefaultPolicy open\n<Location />\nAllow from all\n</Location>\n"
                      "<Policy open>\nJobPrivateAccess all\nJobPrivateValues none\n<Limit "
                      "All>\nOrder allow,deny\nAllow from all\n</Limit>\n"
                      "</Policy>\n",
                      Socket(), LargestDocument));
    Write(
        folder / "cups-files.conf",
        fmt::format("FileDevice Yes\nServerRoot {0}/root\nRequestRoot {0}/spool\nCacheDir {0}/cache\n"
                    "StateDir {0}/state\nTempDir {0}/tmp\nErrorLog {0}/error\nAccessLog {0}/access\nPageLog {0}/page\n",
                    folder.path.string()));
    const pid_t parent = getpid();
    process = fork();
    if (process < 0)
        return false;
    if (process == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent)
            _exit(1);
        const int silence = open("/dev/null", O_RDWR);
        for (const int stream : {0, 1, 2})
            dup2(silence, stream);
        const std::string settings = folder / "cupsd.conf", files = folder / "cups-files.conf";
        execl(Daemon, Daemon, "-f", "-c", settings.c_str(), "-s", files.c_str(), nullptr);
        _exit(1);
    }
    for (const auto end = std::chrono::steady_clock::now() + StartPatience; std::chrono::steady_clock::now() < end;) {
        int status = 0;
        if (waitpid(process, &status, WNOHANG) == process) {
            process = -1;
            return false;
        }
        if (access(Socket().c_str(), F_OK) == 0 && Run("lpstat -r"))
            return true;
        std::this_thread::sleep_for(Step);
    }
    return false;
}

PrivateSpooler::~PrivateSpooler()
{
    if (process > 0) {
        kill(process, SIGCONT);
        kill(process, SIGTERM);
        for (int round = 0; round < 100 && waitpid(process, nullptr, WNOHANG) == 0; ++round) {
            if (round == 60)
                kill(process, SIGKILL);
            std::this_thread::sleep_for(Step);
        }
    }
}

bool PrivateSpooler::Run(const std::string& command) const
{
    return std::system(("timeout 10 " + command + " >/dev/null 2>&1").c_str()) == 0;
}

void PrivateSpooler::AddPrinter(std::string_view name) const
{
    // A queue that passes on what it gets; its paper goes nowhere.
    Run(fmt::format("/usr/sbin/lpadmin -p {} -E -v file:///dev/null -D 'Printer {}' -L 'First floor'", name, name));
}

void PrivateSpooler::AddPrinterWithEdge(std::string_view name, double left, double bottom, double right,
                                        double top) const
{
    constexpr double Width = 595.28, Height = 841.89;
    const std::filesystem::path description = folder / (std::string(name) + ".ppd");
    Write(description,
          fmt::format("*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
                      "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"EDGE.PPD\"\n"
                      "*Manufacturer: \"Test\"\n*Product: \"(Edge)\"\n*ModelName: \"Edge\"\n"
                      "*ShortNickName: \"Edge\"\n*NickName: \"Edge\"\n*PSVersion: \"(3010.000) 0\"\n"
                      "*LanguageLevel: \"3\"\n*ColorDevice: False\n*DefaultColorSpace: Gray\n"
                      "*cupsFilter: \"application/vnd.cups-pdf 0 -\"\n"
                      "*OpenUI *PageSize/Size: PickOne\n*OrderDependency: 10 AnySetup *PageSize\n"
                      "*DefaultPageSize: A4\n*PageSize A4/A4: \"\"\n*CloseUI: *PageSize\n"
                      "*OpenUI *PageRegion: PickOne\n*OrderDependency: 10 AnySetup *PageRegion\n"
                      "*DefaultPageRegion: A4\n*PageRegion A4/A4: \"\"\n*CloseUI: *PageRegion\n"
                      "*DefaultImageableArea: A4\n*ImageableArea A4/A4: \"{} {} {} {}\"\n"
                      "*DefaultPaperDimension: A4\n*PaperDimension A4/A4: \"{} {}\"\n",
                      left, bottom, Width - right, Height - top, Width, Height));
    Run(fmt::format("/usr/sbin/lpadmin -p {} -E -v file:///dev/null -P {}", name, description.string()));
}

void PrivateSpooler::RemovePrinter(std::string_view name) const
{
    Run(fmt::format("/usr/sbin/lpadmin -x {}", name));
}

void PrivateSpooler::SetDefault(std::string_view name) const
{
    Run(fmt::format("/usr/sbin/lpadmin -d {}", name));
}

void PrivateSpooler::Reject(std::string_view name) const
{
    Run(fmt::format("/usr/sbin/cupsreject {}", name));
}

void PrivateSpooler::Freeze() const
{
    kill(process, SIGSTOP);
}

void PrivateSpooler::Thaw() const
{
    kill(process, SIGCONT);
}

void PrivateSpooler::SaveOptions(std::string_view printer, std::string_view options) const
{
    std::filesystem::create_directories(folder / ".cups");
    Write(folder.path / ".cups" / "lpoptions", fmt::format("Dest {} {}\n", printer, options));
}

void PrivateSpooler::ForgetOptions() const
{
    std::filesystem::remove(folder.path / ".cups" / "lpoptions");
}

std::vector<std::map<std::string, std::string>> PrivateSpooler::AllJobs() const
{
    std::vector<std::map<std::string, std::string>> jobs;
    for (int number = 1;; ++number) {
        auto attributes = AttributesOf(number);
        if (!attributes.contains("job-id"))
            return jobs;
        jobs.push_back(std::move(attributes));
    }
}

std::map<std::string, std::string> PrivateSpooler::AttributesOfJob(std::string_view name) const
{
    for (auto& attributes : AllJobs())
        if (attributes["job-name"] == name)
            return attributes;
    return {};
}

std::vector<PrivateSpooler::Job> PrivateSpooler::Jobs() const
{
    std::vector<Job> jobs;
    for (int number = 1;; ++number) {
        Job job{.attributes = AttributesOf(number), .pages = {}};
        if (!job.attributes.contains("job-id"))
            return jobs;
        const std::filesystem::path document = folder.path / "spool" / fmt::format("d{:05}-001", number);
        if (!std::filesystem::exists(document))
            continue;
        std::istringstream pages(OutputOf(fmt::format("pdftotext {} -", document.string())));
        for (std::string page; std::getline(pages, page, '\f');)
            job.pages.push_back(Trimmed(page));
        jobs.push_back(std::move(job));
    }
}

} // namespace quillmere::test
