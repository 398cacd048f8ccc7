// SPDX-License-Identifier: MIT
#include "UpdateFetcher/Helper.h"

#include "UpdateFetcher/FeedCheck.h"
#include "UpdateFetcher/PackageFetch.h"
#include "VesloraCore/Overloaded.h"

#include <QCoreApplication>
#include <QTimer>

#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace veslora::Helper {

namespace {

constexpr std::size_t longestQuestion = std::size_t{64} << 10;
/// The package is held whole when its signature is looked at, beside TLS and the toolkit.
constexpr rlim_t mostMemory = rlim_t{768} << 20;

bool limit(__rlimit_resource resource, rlim_t most) {
    const rlimit both{most, most};
    return setrlimit(resource, &both) == 0;
}

/// Empty when it is longer than any.
std::string readQuestion() {
    std::string question(longestQuestion + 1, '\0');
    question.resize(std::fread(question.data(), 1, question.size(), stdin));
    return question.size() <= longestQuestion ? question : std::string();
}

int print(const UpdateAnswer& answer) {
    const std::string line = UpdateMessages::print(answer);
    const bool isPrinted = std::fwrite(line.data(), 1, line.size(), stdout) == line.size();
    return isPrinted && std::fflush(stdout) == 0 ? 0 : 1;
}

/// Within the event loop, by a job that ends it.
template <class Job>
int runJob(Job& job) {
    QTimer::singleShot(
        0, [&job] { job.start([](const UpdateAnswer& answer) { QCoreApplication::exit(print(answer)); }); });
    return QCoreApplication::exec();
}

} // namespace

bool prepare(bool limitsMemory) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A file that would grow beyond the limit is an error of its write, not the end.
    std::signal(SIGXFSZ, SIG_IGN);
    const bool isMemoryLimited = !limitsMemory || limit(RLIMIT_AS, mostMemory);
    return isMemoryLimited && limit(RLIMIT_CORE, 0) &&
           limit(RLIMIT_FSIZE, static_cast<rlim_t>(AppcastItem::largestPackage));
}

int run(const FetchLimits& limits) {
    const auto question = UpdateMessages::parseQuestion(readQuestion());
    if (!question) {
        return 1;
    }
    return std::visit(Overloaded{[&limits](const FeedQuestion& asked) {
                                     FeedCheck job(asked, limits);
                                     return runJob(job);
                                 },
                                 [&limits](const PackageQuestion& asked) {
                                     if (asked.job == PackageQuestion::Job::verify) {
                                         return print(PackageFetch::verified(asked));
                                     }
                                     PackageFetch job(asked, limits);
                                     return runJob(job);
                                 }},
                      *question);
}

} // namespace veslora::Helper
