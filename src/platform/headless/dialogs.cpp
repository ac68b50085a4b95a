#include "platform/dialogs.h"

#include "platform/headless/headless.h"

template <typename T>
static T TakeAnswer(std::deque<T>& answers, T none) {
    if (answers.empty()) return none;
    T answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

std::wstring PickFolder(const std::wstring& prompt) {
    headless.prompts.push_back(prompt);
    return TakeAnswer<std::wstring>(headless.folderAnswers, {});
}

Answer AskYesNo(const std::wstring& text, const std::wstring&) {
    headless.prompts.push_back(text);
    return TakeAnswer(headless.questionAnswers, Answer::No);
}

Answer AskYesNoCancel(const std::wstring& text, const std::wstring&) {
    headless.prompts.push_back(text);
    return TakeAnswer(headless.questionAnswers, Answer::Cancel);
}

bool RecycleFolder(const std::wstring& path) {
    if (headless.recycleWorks) headless.recycled.push_back(path);
    return headless.recycleWorks;
}

bool OpenWithSystem(const std::wstring& path, bool) {
    if (headless.openWorks) headless.opened.push_back(path);
    return headless.openWorks;
}
