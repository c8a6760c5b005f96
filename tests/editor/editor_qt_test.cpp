#include "oxSuperAPI/editor/editor_qt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <clocale>
#include <functional>
#include <thread>

#include "oxSuperAPI/editor/display.h"
#include "oxSuperAPI/editor/editor_dialog.h"

namespace oxSuperAPI::tests {
namespace {

const std::string Compact = R"({"abn":"53004085616","amount":1.50,"funds":[]})";

/// The form that the library would use, and a person who does something with the dialog once it is shown.
class TPerson {
 public:
  explicit TPerson(TEditorKind Kind) : FForm(CreateQtEditor(Kind, {}, TScreens::OffscreenToo)) {
    FForm->SetCaption(Kind == TEditorKind::Request ? "Edit Request" : "Edit Response");
    if (Kind == TEditorKind::Response) FForm->SetStatusText("500");
  }

  /// "cancel", or what the form gave back: skip, status, entries, text.
  std::string Edit(const TStringList& Lines, const std::function<void(TPerson&)>& Action) {
    FForm->SetLines(Lines);
    QTimer::singleShot(0, [&] {
      Dialog = dynamic_cast<TEditorDialog*>(QApplication::activeModalWidget());
      Text = Dialog->findChild<QPlainTextEdit*>("text");
      EXPECT_TRUE(QTest::qWaitForWindowActive(Dialog));
      Action(*this);
      if (Dialog->isVisible()) Dialog->reject();
    });
    if (FForm->ShowModal() != mrOk) return "cancel";
    const TStringList Left = FForm->Lines();
    return (FForm->SkipChecked() ? "skip " : "") + FForm->StatusText() + " " + std::to_string(Left.Count()) + " " +
           Left.Text();
  }

  void Press(Qt::Key Key, Qt::KeyboardModifiers Modifiers = Qt::NoModifier) {
    QWidget* const Focus = Dialog->focusWidget();
    QTest::keyClick(Focus ? Focus : Dialog, Key, Modifiers);
  }
  void Ok() { Press(Qt::Key_Return, Qt::ControlModifier); }
  void Type(const char* Letters) { QTest::keyClicks(Dialog->focusWidget(), Letters); }
  void Replace(const QString& From, const QString& To) {
    Text->moveCursor(QTextCursor::Start);
    ASSERT_TRUE(Text->find(From));
    Text->insertPlainText(To);
  }
  template <class Widget>
  Widget& Child(const char* Name) {
    return *Dialog->findChild<Widget*>(Name);
  }
  QString Hint() { return Child<QLabel>("hint").isVisible() ? Child<QLabel>("hint").text() : ""; }

  TEditorDialog* Dialog = nullptr;
  QPlainTextEdit* Text = nullptr;

 private:
  std::unique_ptr<TfrmResponseEditor> FForm;
};

TEST(QtEditor, GivesBackWhatThePersonLeft) {
  TPerson Request(TEditorKind::Request), Response(TEditorKind::Response);
  const TStringList Lines({Compact, "", " "});
  EXPECT_EQ(Request.Edit(Lines, [](TPerson& P) { P.Ok(); }), " 3 " + Lines.Text());
  EXPECT_EQ(Request.Edit(Lines, [](TPerson& P) { P.Press(Qt::Key_Escape); }), "cancel");
  EXPECT_EQ(Request.Edit(Lines, [](TPerson& P) { P.Dialog->close(); }), "cancel");
  const auto Undone = [](TPerson& P) { P.Replace("1.50", "2"), P.Text->undo(), P.Text->undo(), P.Ok(); };
  EXPECT_EQ(Request.Edit(Lines, Undone), " 3 " + Lines.Text());
  EXPECT_EQ(Request.Edit(TStringList({Compact}),
                         [](TPerson& P) {
                           EXPECT_EQ(P.Dialog->windowTitle(), "Edit Request");
                           EXPECT_EQ(P.Text->document()->blockCount(), 5);
                           EXPECT_FALSE(P.Dialog->findChild<QLineEdit*>("status"));
                           P.Child<QCheckBox>("skip").click();
                           P.Replace("1.50", "2.75"), P.Ok();
                         }),
            R"(skip  1 {"abn":"53004085616","amount":2.75,"funds":[]})");
  const std::string Page = "<p>\r\n\u00A0\u2028\U0001F600 \xFF\x01</p>\r\n";
  EXPECT_EQ(Response.Edit(TStringList({Page}),
                          [](TPerson& P) {
                            EXPECT_FALSE(P.Dialog->findChild<QCheckBox*>("skip"));
                            QLineEdit& Status = P.Child<QLineEdit>("status");
                            EXPECT_EQ(Status.text(), "500");
                            for (const char* Wrong : {"", "20x", "2000"}) {
                              Status.setText(Wrong), P.Ok();
                              EXPECT_TRUE(P.Dialog->isVisible() && P.Hint().contains("one to three digits"));
                            }
                            Status.setText(" 201 ");
                            P.Text->moveCursor(QTextCursor::Start), P.Text->insertPlainText("0\n");
                            P.Text->moveCursor(QTextCursor::End), P.Text->insertPlainText("1"), P.Ok();
                          }),
            "201 1 0\r\n" + Page + "1");
}

TEST(QtEditor, PointsOutWhatIsNoJSONAndSendsIt) {
  TPerson Request(TEditorKind::Request);
  EXPECT_EQ(Request.Edit(TStringList({Compact}),
                         [](TPerson& P) {
                           EXPECT_EQ(P.Hint(), "");
                           P.Replace("\"amount\":", "\u00E9 \U0001F600");
                           EXPECT_TRUE(P.Hint().startsWith("Not JSON, line 3, column 3: ")) << P.Hint().toStdString();
                           P.Replace("\u00E9 \U0001F600", "\"\U0001F600\"");
                           EXPECT_TRUE(P.Hint().startsWith("Not JSON, line 3, column 7: ")) << P.Hint().toStdString();
                           P.Ok();
                         }),
            " 1 {\"abn\":\"53004085616\",\"\U0001F600\" 1.50,\"funds\":[]}");
  Request.Edit({}, [](TPerson& P) { EXPECT_EQ(P.Hint(), ""); });
}

TEST(QtEditor, FindsAndGoesOnFromTheOtherEnd) {
  TPerson(TEditorKind::Request).Edit(TStringList({"one two ONE\ntwo"}), [](TPerson& P) {
    const auto Selected = [&P] { return P.Text->textCursor().selectionStart(); };
    P.Press(Qt::Key_F, Qt::ControlModifier), P.Type("one");
    EXPECT_EQ(Selected(), 0);
    const QLabel& Found = P.Child<QLabel>("found");
    const std::tuple<Qt::Key, Qt::KeyboardModifier, int, const char*> Keys[] = {
        {Qt::Key_Return, Qt::NoModifier, 8, ""},
        {Qt::Key_F3, Qt::NoModifier, 0, "Continued from the beginning"},
        {Qt::Key_F3, Qt::ShiftModifier, 8, "Continued from the end"},
        {Qt::Key_Return, Qt::ShiftModifier, 0, ""},
        {Qt::Key_X, Qt::NoModifier, 0, "Not found"}};
    for (const auto& [Key, Modifier, Place, Message] : Keys) {
      P.Press(Key, Modifier);
      EXPECT_EQ(Selected(), Place) << Key;
      EXPECT_EQ(Found.text(), Message);
    }
    P.Press(Qt::Key_Escape);
    EXPECT_TRUE(P.Dialog->isVisible() && P.Text->hasFocus() && !Found.isVisible());
  });
}

TEST(QtEditor, ShowsAHugeTextInPartAndLeavesItAsItIs) {
  for (const std::string& Huge : {std::string(TEditorDialog::MaxTextBytes, '\n') + "end",
                                  "[\"" + std::string(TEditorDialog::MaxLineBytes, 'x') + "\u00E9\"]"})
    EXPECT_TRUE(TPerson(TEditorKind::Request).Edit(TStringList({Huge}), [](TPerson& P) {
      EXPECT_TRUE(P.Text->isReadOnly() && P.Hint().contains("too much"));
      EXPECT_LT(P.Text->toPlainText().size(), 100'000);
      P.Type("x"), P.Ok();
    }) == " 1 " + Huge);
}

TEST(QtEditor, RemembersItsSizeAndKeepsTheLocale) {
  const std::string Locale = std::setlocale(LC_ALL, nullptr);
  TPerson(TEditorKind::Request).Edit({}, [](TPerson& P) { P.Dialog->resize(700, 500); });
  TPerson(TEditorKind::Request).Edit({}, [](TPerson& P) { EXPECT_EQ(P.Dialog->size(), QSize(700, 500)); });
  TPerson(TEditorKind::Response).Edit({}, [](TPerson& P) { EXPECT_NE(P.Dialog->size(), QSize(700, 500)); });
  EXPECT_EQ(Locale, std::setlocale(LC_ALL, nullptr));
}

// Each in a process of its own, since a process has one QApplication at most.
TEST(QtEditorDeathTest, IsOfferedOnlyWhereItCanBeSeenAndUsed) {
  const auto Offered = [](TScreens Screens) {
    const bool Form = CreateQtEditor(TEditorKind::Request, {}, Screens) != nullptr;
    return Form == QtEditorAvailable(Screens) ? Form : throw std::logic_error("the two disagree");
  };
  const auto Exits = testing::ExitedWithCode(0);
  const auto NoDisplay = [&] {
    setenv("QT_QPA_PLATFORM", "xcb;wayland", 1);
    for (const char* Display : {"", ":987", "no.such.host:0"})
      for (const char* Wayland : {"", "no-such-socket"}) {
        setenv("DISPLAY", Display, 1), setenv("WAYLAND_DISPLAY", Wayland, 1);
        if (Offered(TScreens::OffscreenToo)) std::exit(1);
      }
    std::exit(QApplication::instance() ? 2 : 0);
  };
  EXPECT_EXIT(NoDisplay(), Exits, "");
  EXPECT_EXIT((setenv("QT_QPA_PLATFORM", "offscreen", 1), std::exit(Offered(TScreens::Real))), Exits, "");
  const auto NotTheMainThread = [&] {
    bool Here = true, AfterMain = true;
    std::thread([&] { Here = Offered(TScreens::OffscreenToo); }).join();
    const bool InMain = Offered(TScreens::OffscreenToo);
    std::thread([&] { AfterMain = Offered(TScreens::OffscreenToo); }).join();
    std::exit(Here || !InMain || AfterMain);
  };
  EXPECT_EXIT(NotTheMainThread(), Exits, "");
  int Count = 0;
  const auto NoWidgets = [&] {
    const QCoreApplication Console(Count, nullptr);
    std::exit(Offered(TScreens::OffscreenToo));
  };
  EXPECT_EXIT(NoWidgets(), Exits, "");
  const auto AnotherThreadOfAHostWithWindows = [&] {
    QApplication Application(Count, nullptr);
    QTimer Person;
    Person.callOnTimeout([] {
      if (auto* const Dialog = dynamic_cast<TEditorDialog*>(QApplication::activeModalWidget())) Dialog->accept();
    });
    Person.start(0);
    std::string Result;
    std::thread Library([&] {
      const auto Form = CreateQtEditor(TEditorKind::Request, {}, TScreens::OffscreenToo);
      Form->SetLines(TStringList({"text"}));
      Result = Form->ShowModal() == mrOk ? Form->Lines().Text() : "cancel";
      QMetaObject::invokeMethod(&Application, [] { QApplication::quit(); });
    });
    QApplication::exec();
    Library.join();
    std::exit(Result == "text" ? 0 : 1);
  };
  EXPECT_EXIT(AnotherThreadOfAHostWithWindows(), Exits, "");
}

const char* const Batch =
    R"({"contributionDetail":{"identifier":{"messageId":"4f1d2c36-5e0b-4b3f-9a51-0c6d3b7e8f90","dateTime":)"
    R"("2026-07-14T02:11:09Z"},"command":"validate","employers":[{"abn":"53004085616","organisationName":)"
    R"("Wattle & Sons Pty Ltd","funds":[{"usi":"STA0100AU","members":[{"payrollNumber":"E7","familyName":"Nguyễn",)"
    R"("givenName":"Văn An","superannuationGuarantee":"762.50","salarySacrifice":"120.00"}]}]}]}})";
const char* const Answer =
    R"({"status":"Submitted","processId":"7c0e4a52","statusCode":200,"payments":[{"abn":"53004085616","amount":)"
    R"("882.50","prn":"000123456789","settled":false,"due":null}],"validations":[]})";

/// How the dialog looks, written into the directory $OXSUPERAPI_SCREENSHOTS when there is one.
QImage Shoot(TEditorDialog& Dialog, const char* Name) {
  Dialog.resize(760, 560);
  Dialog.show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Dialog));
  const QImage Image = Dialog.grab().toImage();
  const QString Directory = qEnvironmentVariable("OXSUPERAPI_SCREENSHOTS");
  EXPECT_TRUE(Directory.isEmpty() || Image.save(Directory + "/" + Name)) << Name;
  return Image;
}

/// Pixels of the colour with which the hue of a text is told from grey ones and from white.
int ColouredPixels(const QImage& Image, int Hue) {
  int Count = 0;
  for (int Y = 0; Y < Image.height(); ++Y)
    for (int X = 0; X < Image.width(); ++X) {
      const QColor Colour = Image.pixelColor(X, Y);
      Count += Colour.hslSaturation() > 80 && std::abs(Colour.hslHue() - Hue) < 20;
    }
  return Count;
}

TEST(Screenshots, ShowTheForms) {
  ASSERT_TRUE(NeedApplication(TScreens::OffscreenToo));
  constexpr int Blue = 212, Green = 135, Amber = 39;
  TEditorDialog Request(TEditorKind::Request, "OK: the text as it stands here is sent. Cancel: nothing is sent.");
  Request.setWindowTitle("Edit Request");
  Request.SetLines(TStringList({Batch}));
  const QImage Whole = Shoot(Request, "editor-request.png");
  EXPECT_TRUE(ColouredPixels(Whole, Blue) > 500 && ColouredPixels(Whole, Green) > 500);

  auto* const Text = Request.findChild<QPlainTextEdit*>("text");
  ASSERT_TRUE(Text->find("\"organisationName\": "));
  Text->insertPlainText("\"organisationName\" ");
  EXPECT_GT(ColouredPixels(Shoot(Request, "editor-request-not-json.png"), Amber), ColouredPixels(Whole, Amber) + 1000);

  TEditorDialog Response(TEditorKind::Response,
                         "OK: what stands here counts as the answer. Cancel: the answer counts as it came.");
  Response.setWindowTitle("Edit Response");
  Response.SetLines(TStringList({Answer}));
  Response.SetStatusText("200");
  Response.show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Response));
  QTest::keyClick(&Response, Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(Response.focusWidget(), "submitted");
  EXPECT_GT(ColouredPixels(Shoot(Response, "editor-response.png"), Blue), 300);
}

}  // namespace
}  // namespace oxSuperAPI::tests
