#include "FaultMatrix.h"

#include <algorithm>

namespace Test
{

namespace
{

struct OutcomeForm {
    Outcome outcome;
    char letter;
    QString word;
    QString sentence;
};

const QVector<OutcomeForm>& getOutcomes()
{
    static const QVector<OutcomeForm> outcomes{
        {Outcome::Usual, 'u', QStringLiteral("usual"),
         QStringLiteral("As if nothing were wrong: the verdict of a healthy tool.")},
        {Outcome::Patient, 'l', QStringLiteral("later"),
         QStringLiteral("The panel waits, without a verdict, as long as the tool does; then as "
                        "usual.")},
        {Outcome::Told, 'r', QStringLiteral("told"),
         QStringLiteral("The failure is told in its own words, and nothing else changes: the next "
                        "step is taken, no bit is remembered.")},
        {Outcome::Passed, 'p', QStringLiteral("passed on"),
         QStringLiteral("Nothing is tested: what came is taken for the answer, its first line for "
                        "the mode and for the place of the tool. On the console it stands line by "
                        "line, and the next line of a command file is sent.")},
        {Outcome::Forgotten, 'f', QStringLiteral("no boards"),
         QStringLiteral("A listing without boards: each known one is told as disconnected, until a "
                        "later listing names it again.")},
        {Outcome::Thrown, 't', QStringLiteral("thrown"),
         QStringLiteral("The reply says nothing of what was asked: \"Should not be here\".")},
        {Outcome::Waits, 'n', QStringLiteral("waits"),
         QStringLiteral("The wait goes on without a limit and without a verdict; the window "
                        "lives.")},
        {Outcome::Aside, 'a', QStringLiteral("aside"),
         QStringLiteral("In the transcript, and on the console when it was standard output and the "
                        "tool ends; what is asked next is answered as usual.")},
        {Outcome::NoTool, 'm', QStringLiteral("no tool"),
         QStringLiteral("\"Cannot found ksbase2_cli in $PATH\": no window is made.")},
        {Outcome::Blocked, 'b', QStringLiteral("blocked"),
         QStringLiteral("The program stands still, as long as the search does.")},
        {Outcome::Ends, 'x', QStringLiteral("ends"),
         QStringLiteral("\"ksbase2 process has finished. This should not happen\", the last words "
                        "of the tool, the end of the process with status 1. No verdict.")},
        {Outcome::EndsNext, 'y', QStringLiteral("ends next"),
         QStringLiteral("As usual; the next command cannot be written, and the process ends as "
                        "with the end of the tool.")},
        {Outcome::Left, 'q', QStringLiteral("left"),
         QStringLiteral("The tool comes to its own end; nothing is told.")},
        {Outcome::Killed, 'k', QStringLiteral("killed"),
         QStringLiteral("The tool is killed after three seconds; nothing is told.")},
        {Outcome::NotMet, '-', QStringLiteral("–"),
         QStringLiteral("They cannot meet: nothing is asked that could be answered so, or the "
                        "moment is over. A mark between two steps of a bring-up, or between two "
                        "lines of a command file, is either cleared or ends the next wait: which "
                        "of them, nobody can tell.")},
    };
    return outcomes;
}

const OutcomeForm& getOutcomeForm(char letter)
{
    return *std::find_if(getOutcomes().begin(), getOutcomes().end(),
                         [letter](const OutcomeForm& form) { return form.letter == letter; });
}

} // namespace

namespace FaultMatrix
{

const QVector<FaultForm>& getFaults()
{
    // Of the letters: looking, starting, first listing; six steps of the bring-up; idle; listing,
    // mode, force bit, monitoring; mode, reset, clock, force bit, selection; flash, load, error
    // handler, typed; Help button, command file, capture; nested; closing.
    static const QVector<FaultForm> faults{
        {Fault::Late,
         QStringLiteral("late"),
         QStringLiteral("the answer lets one wait"),
         {},
         QStringLiteral("bll llllll - llll lllll llll lll l q")},
        {Fault::Never, QStringLiteral("never"), QStringLiteral("no answer comes"),
         QStringLiteral("kind = \"never\""),
         QStringLiteral("bnn nnnnnn - nnnn nnnnn nnnn nnn n k")},
        {Fault::Refused, QStringLiteral("refused"), QStringLiteral("the answer is an error"),
         QStringLiteral("kind = \"refused\""),
         QStringLiteral("m-f rrrrrr - fprp rrrrr rrrp ppp r -")},
        {Fault::Split, QStringLiteral("split"), QStringLiteral("each byte comes by itself"),
         QStringLiteral("kind = \"split\"\nevery = 1"),
         QStringLiteral("u-u uuuuuu - uuuu uuuuu uuuu uuu u -")},
        {Fault::Nul, QStringLiteral("NUL"), QStringLiteral("a NUL byte stands before the mark"),
         QStringLiteral("kind = \"nul\""), QStringLiteral("uuu uuuuuu a uuuu uuuuu uuuu uuu u q")},
        {Fault::NulAhead, QStringLiteral("NUL ahead"),
         QStringLiteral("a NUL byte stands before the whole answer, which is lost with its mark"),
         QStringLiteral("kind = \"nul\"\nat = [0]"),
         QStringLiteral("uun nnnnnn a nnnn nnnnn nnnn nnn n q")},
        {Fault::Before, QStringLiteral("text before"), QStringLiteral("a line comes first"),
         QStringLiteral("kind = \"before\"\ntext = \"Notice\\n\""),
         QStringLiteral("puu uuuuuu - upup uuuuu uuup ppp u q")},
        {Fault::Between, QStringLiteral("text between"),
         QStringLiteral("a line and a mark come between two answers"),
         QStringLiteral("kind = \"after\"\ntext = \"Notice\\nCOMMAND FAILED\\n\""),
         QStringLiteral("-u- ------ a uuuu uuuuu uuuu u-u - -")},
        {Fault::After, QStringLiteral("text after"), QStringLiteral("a line follows the mark"),
         QStringLiteral("kind = \"after\"\ntext = \"Notice\\n\""),
         QStringLiteral("--u uuuuuu a uuuu uuuuu uuuu uuu u q")},
        {Fault::Large, QStringLiteral("very large"),
         QStringLiteral(
             "a million bytes stand before the mark; to a load and when idle, 32 million"),
         QStringLiteral("kind = \"large\"\nbytes = %1"),
         QStringLiteral("puu uuuuuu a uuuu uuuuu uuuu uuu u q")},
        {Fault::Output, QStringLiteral("standard output"),
         QStringLiteral("a line goes to standard output"),
         QStringLiteral("kind = \"stdout\"\ntext = \"aside\\n\""),
         QStringLiteral("-uu uuuuuu a uuuu uuuuu uuuu uuu u q")},
        {Fault::Garbage, QStringLiteral("garbage"),
         QStringLiteral("noise stands in place of the answer, and its mark"),
         QStringLiteral("kind = \"garbage\""),
         QStringLiteral("puf rrrrrr a fptp rrrrr urrp ppp r q")},
        {Fault::Exit, QStringLiteral("exit"), QStringLiteral("the tool ends with a status"),
         QStringLiteral("kind = \"exit\"\nstatus = 3\ntext = \"last words\\n\""),
         QStringLiteral("mxx xxxxxx x xxxx xxxxx xxxx xxx x q")},
        {Fault::Signal, QStringLiteral("signal"), QStringLiteral("a signal ends the tool"),
         QStringLiteral("kind = \"kill\"\nsignal = 9\ntext = \"last words\\n\""),
         QStringLiteral("mxx xxxxxx x xxxx xxxxx xxxx xxx x q")},
        {Fault::EndAtStart,
         QStringLiteral("ends at once"),
         QStringLiteral("the tool ends right after its start"),
         {},
         QStringLiteral("-x- ------ - ---- ----- ---- --- - -")},
        {Fault::CannotStart,
         QStringLiteral("cannot be started"),
         QStringLiteral("there is a file, and no program in it"),
         {},
         QStringLiteral("ux- ------ - ---- ----- ---- --- - -")},
        {Fault::CloseInput, QStringLiteral("closes its input"),
         QStringLiteral("the tool closes its standard input, answers, and lives on"),
         QStringLiteral("kind = \"close_stdin\""),
         QStringLiteral("uxy yyyyyy y yyyy yyyyy yyyy yyy y k")},
        {Fault::CloseErrors, QStringLiteral("closes its standard error"),
         QStringLiteral("the tool closes its standard error and lives on"),
         QStringLiteral("kind = \"close_stderr\""),
         QStringLiteral("unn nnnnnn n nnnn nnnnn nnnn nnn n q")},
    };
    return faults;
}

const FaultForm& getForm(Fault fault)
{
    return *std::find_if(getFaults().begin(), getFaults().end(),
                         [fault](const FaultForm& form) { return form.fault == fault; });
}

Outcome getOutcome(Fault fault, State state)
{
    QString letters = getForm(fault).outcomes;
    letters.remove(QLatin1Char(' '));
    return getOutcomeForm(letters.at(static_cast<int>(state)).toLatin1()).outcome;
}

QString getTrouble(Fault fault, State state)
{
    const QString trouble = getForm(fault).trouble;
    return fault == Fault::Large ? trouble.arg(getLargeSize(state)) : trouble;
}

int getLargeSize(State state)
{
    return state == State::Load || state == State::Idle ? 32'000'000 : 1'000'000;
}

QVector<Cell> getCells()
{
    QVector<Cell> cells;
    for (const FaultForm& fault : getFaults()) {
        for (const StateForm& state : getStates()) {
            const Outcome outcome = getOutcome(fault.fault, state.state);
            if (outcome != Outcome::NotMet) {
                cells += {fault.fault, state.state, outcome,
                          fault.title + QStringLiteral(": ") + state.title};
            }
        }
    }
    return cells;
}

QString getPage()
{
    QString page = QStringLiteral(
        "# Faults of the tool in every state of the panel\n\n"
        "What the panel makes of each fault of the board tool, whatever it is doing at that "
        "moment. Each cell is\na test of `tst_fault_matrix` where the tool answers, of "
        "`tst_fault_matrix_waits` where it never does,\nof `tst_fault_matrix_unasked` where it "
        "is asked nothing, and of `tst_fault_matrix_ends` where the\nprocess ends. This page is "
        "written by the table of the tests (`build/dev/tests/tst_fault_matrix\n--page`), and a "
        "test fails when it is stale.\n\n"
        "| Fault | What the tool does |\n| --- | --- |\n");
    for (const FaultForm& form : getFaults()) {
        page += QStringLiteral("| %1 | %2 |\n").arg(form.title, form.meaning);
    }
    page += QStringLiteral("\n| Outcome | What the panel does |\n| --- | --- |\n");
    for (const OutcomeForm& form : getOutcomes()) {
        page += QStringLiteral("| %1 | %2 |\n").arg(form.word, form.sentence);
    }
    page += QStringLiteral("\n| State of the panel |");
    QString rule = QStringLiteral("| --- |");
    for (const FaultForm& form : getFaults()) {
        page += QStringLiteral(" %1 |").arg(form.title);
        rule += QStringLiteral(" --- |");
    }
    page += QStringLiteral("\n%1\n").arg(rule);
    for (const StateForm& state : getStates()) {
        page += QStringLiteral("| %1 |").arg(state.title);
        for (const FaultForm& form : getFaults()) {
            QString letters = form.outcomes;
            letters.remove(QLatin1Char(' '));
            const char letter = letters.at(static_cast<int>(state.state)).toLatin1();
            page += QStringLiteral(" %1 |").arg(getOutcomeForm(letter).word);
        }
        page += QLatin1Char('\n');
    }
    return page;
}

} // namespace FaultMatrix

} // namespace Test
