// Runs bash, zsh and fish with a completion of ours. zsh completes only at a terminal: it gets one of zpty.
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tests/manual/shells.h"

#include "base/manual/completions.h"
#include "base/process.h"
#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quelm::test {
namespace {

namespace fs = std::filesystem;

/// Ahead of the answers to a question.
const std::string mark = "@@ question";

std::string joined(const Question& words)
{
    std::string line;
    for (const auto& word : words)
        line += (line.empty() ? "" : " ") + word;
    return line;
}

std::string bashScript(const CommandView& program, const std::vector<Question>& questions)
{
    std::string function = "_" + program.name;
    for (char& letter : function)
        letter = letter == '-' ? '_' : letter;
    std::string script = "source completion\nask() {\n COMP_WORDS=(\"$@\")\n COMP_CWORD=$(($# - 1))\n " +
                         function + "\n echo '" + mark + "'\n printf '%s\\n' \"${COMPREPLY[@]}\"\n}\n";
    for (const auto& question : questions) {
        script += "ask";
        for (const auto& word : question)
            script += " '" + word + "'";
        script += "\n";
    }
    return script;
}

std::string fishScript(const std::vector<Question>& questions)
{
    std::string script = "source completion\n";
    for (const auto& question : questions)
        script += "echo '" + mark + "'\ncomplete -C '" + joined(question) + "'\n";
    return script;
}

/// What runs at zsh's terminal: compadd is handed all that is offered.
constexpr const char* zshAtTerminal = R"zsh(
fpath=($PWD/functions $fpath)
autoload -Uz compinit
compinit -u -D
setopt extendedglob
compadd() {
  local -a hits options
  options=("${(@)argv[1,(i)(-|--)]}")
  if [[ " ${options[*]} " != *\ -[a-zA-Z12]#[OAD]\ * ]]; then
    builtin compadd -O hits "$@"
    print -rl -- "${hits[@]}" >> answers
  fi
  builtin compadd "$@"
}
ask() {
  local question
  for question in "${questions[@]}"; do
    print -r -- "MARK" >> answers
    BUFFER=$question CURSOR=$#question
    zle list-choices
  done
  BUFFER=exit
  zle accept-line
}
zle -N ask
bindkey '^T' ask
)zsh";

constexpr const char* zshScript = R"zsh(
zmodload zsh/zpty
zpty inner zsh -f -i
zpty -w inner 'source ./at-terminal; print READY''FOR''QUESTIONS'
zpty -r inner seen '*READYFORQUESTIONS*'
zpty -w -n inner $'\C-t'
while zpty -r inner seen; do :; done
cat answers
)zsh";

void writeText(const std::string& path, const std::string& text)
{
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path) << text;
}

std::string zshQuestions(const std::vector<Question>& questions)
{
    std::string text = zshAtTerminal;
    text.replace(text.find("MARK"), 4, mark);
    text += "questions=(\n";
    for (const auto& question : questions)
        text += "'" + joined(question) + "'\n";
    return text + ")\n";
}

std::string scriptFor(Shell shell, const CommandView& program, const TemporaryFolder& folder,
                      const std::vector<Question>& questions)
{
    switch (shell) {
    case Shell::bash:
        writeText(folder / "completion", bashCompletion(program));
        return bashScript(program, questions);
    case Shell::fish:
        writeText(folder / "completion", fishCompletion(program));
        return fishScript(questions);
    case Shell::zsh:
        writeText(folder / ("functions/_" + program.name), zshCompletion(program));
        writeText(folder / "at-terminal", zshQuestions(questions));
        return zshScript;
    }
    throw std::logic_error("no such shell");
}

std::vector<std::set<std::string>> parted(const std::string& output)
{
    std::vector<std::set<std::string>> answers;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        if (line == mark) {
            answers.emplace_back();
            continue;
        }
        if (answers.empty())
            throw std::runtime_error("ahead of all answers: " + line);
        line.erase(std::min(line.find('\t'), line.size()));
        if (!line.empty())
            answers.back().insert(line);
    }
    return answers;
}

} // namespace

std::string nameOf(Shell shell)
{
    return shell == Shell::bash ? "bash" : shell == Shell::zsh ? "zsh" : "fish";
}

std::vector<std::set<std::string>> completionsOf(Shell shell, const CommandView& program,
                                                 const std::vector<Question>& questions)
{
    const TemporaryFolder folder;
    const auto script = scriptFor(shell, program, folder, questions);
    writeText(folder / "script", "cd '" + (folder / "here") + "'\n" + script);
    fs::create_directories(folder / "here/shelf");
    writeText(folder / "here/letter.ps", "%!PS\n");
    for (const char* name : {"completion", "functions", "at-terminal"})
        if (fs::exists(folder / name))
            fs::rename(folder / name, folder / ("here/" + std::string(name)));
    ProcessRequest request;
    request.arguments = {nameOf(shell),
                         shell == Shell::zsh    ? "-f"
                         : shell == Shell::fish ? "-N"
                                                : "--norc",
                         folder / "script"};
    // No language, no home: nothing of whoever runs the tests.
    request.environment = {"PATH=" + std::string(std::getenv("PATH")), "HOME=" + (folder / "home"),
                           "LC_ALL=C.UTF-8", "TERM=dumb"};
    fs::create_directories(folder / "home");
    const auto result = runProcess(request);
    if (result.exitStatus != 0 || !result.errors.empty())
        throw std::runtime_error(nameOf(shell) + ": " + std::to_string(result.exitStatus) + ": " +
                                 result.errors);
    auto answers = parted(result.output);
    if (answers.size() != questions.size())
        throw std::runtime_error(nameOf(shell) + " answered " + std::to_string(answers.size()) + " of " +
                                 std::to_string(questions.size()));
    return answers;
}

} // namespace quelm::test
