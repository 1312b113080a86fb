#include <corvalta/core/module1.h>
#include <corvalta/core/sounds.h>
#include <corvalta/core/window1.h>
#include <corvalta/platform/app_info.h>
#include <corvalta/platform/application.h>
#include <corvalta/platform/controls.h>
#include <corvalta/platform/text.h>
#include <corvalta/platform/timer.h>
#include <corvalta/platform/url_opener.h>

#include <functional>
#include <map>
#include <utility>

namespace corvalta::core {

using platform::EditField;
using platform::Format;
using platform::GroupBox;
using platform::Listbox;
using platform::PushButton;
using platform::RadioButton;
using platform::StaticText;
using platform::Str;
using platform::Timer;
using platform::Val;

Window1& Window1::instance() { return platform::implicitInstance<Window1>("Window1"); }

platform::Handler Window1::handlerFor(std::string_view control, std::string_view event) {
  using Method = void (Window1::*)();
  static const std::map<std::pair<std::string_view, std::string_view>, Method> plain = {
      {{"Answer", "TextChange"}, &Window1::Answer_TextChange},
      {{"Enter", "Action"}, &Window1::Enter_Action},
      {{"Easy", "Action"}, &Window1::Easy_Action},
      {{"Medium", "Action"}, &Window1::Medium_Action},
      {{"Hard", "Action"}, &Window1::Hard_Action},
      {{"HighScores", "Open"}, &Window1::HighScores_Open},
      {{"ClearScores", "Action"}, &Window1::ClearScores_Action},
      {{"Start", "Action"}, &Window1::Start_Action},
      {{"Timer1", "Action"}, &Window1::Timer1_Action},
      {{"Stop", "Action"}, &Window1::Stop_Action},
      {{"Kagi1", "Action"}, &Window1::Kagi1_Action},
      {{"VeryHard", "Action"}, &Window1::VeryHard_Action},
  };
  if (control == "HighScores" && event == "CellTextChange") {
    return [this](const platform::EventArgs& args) {
      const auto number = [&](std::size_t i) {
        const auto* value = i < args.size() ? std::get_if<std::int32_t>(&args[i]) : nullptr;
        return value != nullptr ? *value : 0;
      };
      HighScores_CellTextChange(number(0), number(1));
    };
  }
  const auto found = plain.find({control, event});
  if (found == plain.end()) return {};
  return [this, method = found->second](const platform::EventArgs&) { (this->*method)(); };
}

// --- Levels ---------------------------------------------------------------------------------

void Window1::setLevel(std::int32_t high, const char* difficulty, const char* op3) {
  Module1.High = high;
  Module1.Difficulty = difficulty;
  control<StaticText>("Op3").setText(op3);
  control<StaticText>("Op3").Refresh(true);
}

void Window1::Easy_Action() { setLevel(10, "Easy", "+"); }
void Window1::Medium_Action() { setLevel(25, "Medium", "+"); }
void Window1::Hard_Action() { setLevel(99, "Hard", "+"); }
void Window1::VeryHard_Action() { setLevel(19, " Very Hard", "/"); }

// --- Problems -------------------------------------------------------------------------------

void Window1::getRandomNumbers() {
  auto& m = Module1;
  // The lower bounds are High divided as a double, then cut to a whole number.
  const auto bound = [&](double divisor) { return static_cast<std::int32_t>(m.High / divisor); };
  for (;;) {
    m.First = m.R->InRange(bound(2), m.High);
    m.Second = m.R->InRange(bound(3), m.High);
    if (m.First == m.Second) continue;
    if (m.Second >= m.First) {
      m.Temp = m.First;
      m.First = m.Second;
      m.Second = m.Temp;
    }
    do {
      m.Third = m.R->InRange(bound(4), m.High);
    } while (m.Third >= m.Second);
    control<StaticText>("Afield").setText(Str(m.First));
    control<StaticText>("Bfield").setText(Str(m.Second));
    control<StaticText>("Cfield").setText(Str(m.Third));
    m.RandomOp1 = m.R->InRange(1, 10);
    control<StaticText>("Op1").setText(m.RandomOp1 < 6 ? "+" : "-");
    m.RandomOp2 = m.R->InRange(1, 10);
    control<StaticText>("Op2").setText(m.RandomOp2 < 6 ? "+" : "-");
    // The operators are read back from what the labels show.
    m.X = control<StaticText>("Op1").Text() == "+" ? m.First + m.Second : m.First - m.Second;
    m.Y = control<StaticText>("Op2").Text() == "+" ? m.Second + m.Third : m.Second - m.Third;
    if (!control<RadioButton>("VeryHard").Value()) {
      m.MyAnswer = static_cast<double>(m.X + m.Y);
      return;
    }
    const double a = static_cast<double>(m.X) / static_cast<double>(m.Y);
    if (static_cast<double>(static_cast<std::int32_t>(a)) == a) continue;
    const std::string s = Format(a, "###.##");
    m.MyAnswer = Val(s);
    control<StaticText>("Hint").setText(s);
    return;
  }
}

// --- Answers --------------------------------------------------------------------------------

void Window1::Answer_TextChange() {
  if (Val(control<EditField>("Answer").Text()) > 0) {
    control<PushButton>("Enter").setEnabled(true);
    control<PushButton>("Enter").setDefault(true);
  }
}

void Window1::Enter_Action() {
  auto& m = Module1;
  const double typed = Val(control<EditField>("Answer").Text());
  const std::string normalised = Format(typed, "###.##");
  m.HisAnswer = Val(normalised);
  if (m.HisAnswer == m.MyAnswer) {
    if (m.SoundFlag) platform::playAndWait(&OK3);
    static const std::pair<const char*, std::int32_t> points[] = {
        {"Easy", 1}, {"Medium", 3}, {"Hard", 5}, {"VeryHard", 10}};
    for (const auto& [level, worth] : points) {
      if (control<RadioButton>(level).Value()) {
        m.Points += worth;
        break;
      }
    }
  }
  clearAnswerFields();
  control<EditField>("SubAnswer1").SetFocus();
  control<StaticText>("GamePoints").setText(Str(m.Points));
  control<StaticText>("GamePoints").Refresh(true);
  control<PushButton>("Enter").setEnabled(false);
  control<PushButton>("Enter").setDefault(false);
  getRandomNumbers();
}

// --- Flow -----------------------------------------------------------------------------------

void Window1::clearAnswerFields() {
  control<EditField>("SubAnswer1").setText("");
  control<EditField>("SubAnswer2").setText("");
  control<EditField>("Answer").setText("");
}

void Window1::clearProblemFields() {
  control<StaticText>("Afield").setText("");
  control<StaticText>("Bfield").setText("");
  control<StaticText>("Cfield").setText("");
}

void Window1::enableAnswerFields(bool enabled) {
  control<EditField>("SubAnswer1").setEnabled(enabled);
  control<EditField>("SubAnswer2").setEnabled(enabled);
  control<EditField>("Answer").setEnabled(enabled);
}

void Window1::Start_Action() {
  auto& m = Module1;
  m.Seconds = 90;
  clearAnswerFields();
  control<StaticText>("Time").setText(Str(m.Seconds));
  control<StaticText>("Time").Refresh(true);
  control<Timer>("Timer1").setMode(2);
  control<GroupBox>("GroupBox1").setEnabled(false);
  control<StaticText>("Banner").setVisible(false);
  m.Points = 0;
  control<StaticText>("GamePoints").setText(Str(m.Points));
  control<StaticText>("GamePoints").Refresh(true);
  control<PushButton>("Start").setDefault(false);
  control<PushButton>("Start").setEnabled(false);
  enableAnswerFields(true);
  control<EditField>("SubAnswer1").SetFocus();
  getRandomNumbers();
}

void Window1::Timer1_Action() {
  auto& m = Module1;
  m.Seconds = m.Seconds - 1;
  control<StaticText>("Time").setText(Str(m.Seconds));
  control<StaticText>("Time").Refresh(true);
  if (m.Seconds != 0) return;
  control<Timer>("Timer1").setMode(0);
  control<StaticText>("Banner").setVisible(true);
  control<GroupBox>("GroupBox1").setEnabled(true);
  CheckScore();
  if (m.SoundFlag) platform::playAndWait(&Microwave);
  if (m.NewHighScoreFlag) {
    application().implicitInstance("Congratulations").ShowModal();
    if (m.SoundFlag) {
      const auto applause = Applause();
      if (!applause) throw platform::NilObjectException("no sound Applause");
      applause->Play();
    }
  }
  control<PushButton>("Start").setEnabled(true);
  control<PushButton>("Enter").setDefault(false);
  control<PushButton>("Enter").setEnabled(false);
  control<PushButton>("Start").setDefault(true);
  clearProblemFields();
  clearAnswerFields();
  enableAnswerFields(false);
  SetFocus();
}

void Window1::Stop_Action() {
  auto& m = Module1;
  m.Seconds = 0;
  clearProblemFields();
  clearAnswerFields();
  control<StaticText>("Time").setText(Str(m.Seconds));
  control<StaticText>("Time").Refresh(true);
  control<Timer>("Timer1").setMode(0);
  control<GroupBox>("GroupBox1").setEnabled(true);
  control<StaticText>("Banner").setVisible(false);
  m.Points = 0;
  control<StaticText>("GamePoints").setText("0");
  control<PushButton>("Start").setDefault(true);
  control<PushButton>("Start").setEnabled(true);
  control<PushButton>("Enter").setEnabled(false);
  control<PushButton>("Enter").setDefault(false);
  enableAnswerFields(false);
  SetFocus();
}

void Window1::Kagi1_Action() { platform::ShowURL(std::string(platform::app_info::supportPageAddress)); }

// --- The window's own events ----------------------------------------------------------------

void Window1::Event_Open() {
  getPlist();
  getScores();
  SetFocus();
}

void Window1::Event_Close() {
  savePlist();
  saveScores();
  application().Quit(0);
}

// --- The score ----------------------------------------------------------------------------

void Window1::CheckScore() {
  auto& m = Module1;
  if (m.Points <= 0) {
    m.NewHighScoreFlag = false;
    return;
  }
  m.NewHighScoreFlag = Val(control<Listbox>("HighScores").Cell(9, 2)) < static_cast<double>(m.Points);
}

}  // namespace corvalta::core
