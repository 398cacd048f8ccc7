// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/UpdateMessages.h"

#include "VesloraCore/Overloaded.h"
#include "VesloraCore/Text/Base64.h"
#include "VesloraCore/Text/Json.h"

#include <algorithm>

namespace veslora::UpdateMessages {

namespace {

constexpr std::string_view check = "check";
constexpr std::string_view download = "download";
constexpr std::string_view verify = "verify";
constexpr std::string_view failed = "failed";
constexpr std::string_view nothingNewer = "nothingNewer";
constexpr std::string_view ready = "ready";
constexpr std::string_view offer = "offer";

std::string line(const Json& message) {
    return message.print(Json::Layout::compact) + "\n";
}

void setText(Json& message, std::string_view key, std::string_view text) {
    message.set(key, Json::makeString(std::string(text)));
}

Json messageOf(std::string_view key, std::string_view word) {
    Json message = Json::makeObject();
    setText(message, key, word);
    return message;
}

void setItem(Json& message, const AppcastItem& item) {
    setText(message, "version", item.version.text());
    setText(message, "url", item.url);
    message.set("length", Json::makeInteger(item.length));
    setText(message, "signature", item.signature);
    setText(message, "kind", item.kind);
    setText(message, "architecture", item.architecture);
}

std::optional<AppcastItem> itemOf(const Json& message) {
    const auto version = ReleaseVersion::parse(message.textAt("version"));
    const Json* const length = message.find("length");
    if (!version || length == nullptr) {
        return std::nullopt;
    }
    AppcastItem item{.version = *version,
                     .notes = message.textAt("notes"),
                     .url = message.textAt("url"),
                     .length = length->integer().value_or(0),
                     .signature = message.textAt("signature"),
                     .kind = message.textAt("kind"),
                     .architecture = message.textAt("architecture")};
    return isSound(item) ? std::optional(item) : std::nullopt;
}

std::optional<UpdateQuestion> packageQuestionOf(const Json& message, PackageQuestion::Job job) {
    const auto item = itemOf(message);
    const std::string folder = message.textAt("folder");
    if (!item || !folder.starts_with('/')) {
        return std::nullopt;
    }
    return PackageQuestion{.job = job, .key = message.textAt("key"), .folder = folder, .item = *item};
}

/// As a part of a file's name.
bool isArchitecture(std::string_view text) {
    return !text.empty() && text.size() <= 16 && std::ranges::all_of(text, [](char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9');
    });
}

bool isSignature(std::string_view text) {
    constexpr std::size_t bytes = 64;
    const auto decoded = Base64::decode(text);
    return decoded && decoded->size() == bytes;
}

} // namespace

bool isSound(const AppcastItem& item) {
    constexpr std::size_t longestAddress = 2048;
    return !item.version.text().empty() && item.url.starts_with("https://") &&
           item.url.size() <= longestAddress && item.length > 0 &&
           item.length <= AppcastItem::largestPackage && isSignature(item.signature) &&
           isArchitecture(item.architecture);
}

std::string print(const UpdateQuestion& question) {
    return std::visit(Overloaded{[](const FeedQuestion& asked) {
                                     Json message = messageOf("job", check);
                                     setText(message, "feed", asked.feed);
                                     setText(message, "key", asked.key);
                                     setText(message, "version", asked.version);
                                     setText(message, "kind", asked.kind);
                                     setText(message, "architecture", asked.architecture);
                                     return line(message);
                                 },
                                 [](const PackageQuestion& asked) {
                                     const bool isDownload = asked.job == PackageQuestion::Job::download;
                                     Json message = messageOf("job", isDownload ? download : verify);
                                     setText(message, "key", asked.key);
                                     setText(message, "folder", asked.folder);
                                     setItem(message, asked.item);
                                     return line(message);
                                 }},
                      question);
}

std::string print(const UpdateAnswer& answer) {
    return std::visit(Overloaded{[](UpdateFailure failure) {
                                     Json message = messageOf("result", failed);
                                     setText(message, "reason", rawValue(failure));
                                     return line(message);
                                 },
                                 [](NothingNewer) { return line(messageOf("result", nothingNewer)); },
                                 [](PackageReady) { return line(messageOf("result", ready)); },
                                 [](const AppcastItem& item) {
                                     Json message = messageOf("result", offer);
                                     setItem(message, item);
                                     setText(message, "notes", item.notes);
                                     return line(message);
                                 }},
                      answer);
}

std::optional<UpdateQuestion> parseQuestion(std::string_view text) {
    const auto message = Json::parse(text);
    const std::string job = message ? message->textAt("job") : std::string();
    if (job == download) {
        return packageQuestionOf(*message, PackageQuestion::Job::download);
    }
    if (job == verify) {
        return packageQuestionOf(*message, PackageQuestion::Job::verify);
    }
    if (job != check) {
        return std::nullopt;
    }
    FeedQuestion question{.feed = message->textAt("feed"),
                          .key = message->textAt("key"),
                          .version = message->textAt("version"),
                          .kind = message->textAt("kind"),
                          .architecture = message->textAt("architecture")};
    const bool isWhole =
        question.feed.starts_with("https://") && ReleaseVersion::parse(question.version).has_value();
    return isWhole ? std::optional<UpdateQuestion>(question) : std::nullopt;
}

std::optional<UpdateAnswer> parseAnswer(std::string_view text) {
    const auto message = Json::parse(text);
    const std::string result = message ? message->textAt("result") : std::string();
    if (result == nothingNewer) {
        return NothingNewer{};
    }
    if (result == ready) {
        return PackageReady{};
    }
    if (result == offer) {
        const auto item = itemOf(*message);
        return item ? std::optional<UpdateAnswer>(*item) : std::nullopt;
    }
    const auto failure = updateFailureFrom(result == failed ? message->textAt("reason") : std::string());
    return failure ? std::optional<UpdateAnswer>(*failure) : std::nullopt;
}

} // namespace veslora::UpdateMessages
