// SPDX-License-Identifier: MIT
#include "bench/inside/TextBench.h"

#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "VesloraUI/Text/TextProof.h"
#include "bench/Clock.h"
#include "bench/Report.h"

#include <QGuiApplication>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace veslora::bench {

namespace {

constexpr std::array usual{
    "npm run build -- --mode production",
    "git push --force-with-lease origin feature/usage-tally:feature/usage-tally && gh pr create --fill "
    "--base main",
    "find . -name '*.o' -newer build/stamp -print0 | xargs -0 rm -f && cmake --build --preset release "
    "--target package",
    "WebFetch https://doc.example.org/reference/layer-surface.html",
    "cat > notes.txt <<'END'\n\tfirst\n\tsecond\nEND\n",
    "mv 'Größenübersicht (Prüfung).odt' ~/Dokumente/Straße.odt",
    "mv 'Kế hoạch tuần này.docx' 'Thư mục/Những điều cần nhớ.docx'",
};

QFont alertFont() {
    constexpr int size = 11;
    QFont font(VesloraStyle::systemFont());
    font.setPixelSize(size);
    font.setWeight(QFont::Medium);
    return font;
}

bool isProven(const std::string& text, const QFont& font) {
    constexpr double width = 472;
    const auto display = ClaudeRequestText::display(text);
    return proofOf(QString::fromStdString(display.text), font, {.width = width}, 1).isGood &&
           display.isComplete;
}

double timeOf(const std::string& text, const QFont& font, bool isGood) {
    const double start = monotonicNow();
    if (isProven(text, font) != isGood) {
        throw std::runtime_error("a text was judged another way than it should");
    }
    return (monotonicNow() - start) * 1000;
}

} // namespace

void measureText(Report& report, bool isShort) {
    const int rounds = isShort ? 2 : 60;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 0;
    const QGuiApplication application(count, nullptr);
    const QFont font = alertFont();
    const std::string hostile(8 << 20, '\n');
    std::vector<double> usualTimes;
    std::vector<double> hostileTimes;
    // The first of the process loads the fonts.
    const double first = timeOf(usual.front(), font, true);
    for (int round = 0; round < rounds; ++round) {
        for (const char* text : usual) {
            usualTimes.push_back(timeOf(text, font, true));
        }
        hostileTimes.push_back(timeOf(hostile, font, false));
    }
    report.add({"text_first", first, "ms", 30, {0.01, 10000}});
    report.add({"text_usual_p50", median(usualTimes), "ms", 0.4, {0.001, 1000}});
    report.add({"text_usual_p95", percentile(usualTimes, 0.95), "ms", 1, {0.001, 1000}});
    report.add({"text_8_mb", median(hostileTimes), "ms", 2, {0.001, 1000}});
}

} // namespace veslora::bench
