// SPDX-License-Identifier: MIT
#include "VesloraUI/Updates/UpdateHelper.h"

namespace veslora {

Task UpdateHelper::ask(const UpdateQuestion& question, double limit,
                       std::function<void(const UpdateAnswer&)> done) {
    return m_programs.run({m_program}, UpdateMessages::print(question), limit,
                          [done = std::move(done)](const ProgramRunning::Result& result) {
                              const auto answer =
                                  result.isDone ? UpdateMessages::parseAnswer(result.output) : std::nullopt;
                              done(answer.value_or(UpdateFailure::helper));
                          });
}

} // namespace veslora
