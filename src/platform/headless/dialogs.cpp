#include "platform/dialogs.h"

#include "platform/headless/headless.h"

template <typename T>
static T TakeAnswer(std::deque<T>& answers, T none) {
    if (answers.empty()) return none;
    T answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

static void OpenDialog(const std::wstring& prompt) {
    headless.prompts.push_back(prompt);
    if (headless.onDialog != nullptr) headless.onDialog();
}

static void OpenBox(const std::wstring& text, const std::wstring& caption) {
    headless.captions.push_back(caption);
    OpenDialog(text);
}

std::wstring PickFolder(const std::wstring& prompt) {
    OpenDialog(prompt);
    return TakeAnswer<std::wstring>(headless.folderAnswers, {});
}

Answer AskYesNo(const std::wstring& text, const std::wstring& caption) {
    OpenBox(text, caption);
    return TakeAnswer(headless.questionAnswers, Answer::No);
}

Answer AskYesNoCancel(const std::wstring& text, const std::wstring& caption) {
    OpenBox(text, caption);
    return TakeAnswer(headless.questionAnswers, Answer::Cancel);
}

void TellError(const wchar_t* text, const wchar_t* caption) { OpenBox(text, caption); }

bool RecycleFolder(const std::wstring& path) {
    if (headless.recycleWorks) headless.recycled.push_back(path);
    return headless.recycleWorks;
}

bool OpenWithSystem(const std::wstring& path, bool) {
    if (headless.openWorks) headless.opened.push_back(path);
    return headless.openWorks;
}
