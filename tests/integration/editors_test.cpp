#include "payroll_office.h"

namespace oxSuperAPI {
namespace {

/// An office whose person uses a piece of shell as the editor; $f is the file.
class Editors : public TOfficeTest {
 protected:
  /// Runs oxsuper on a terminal of its own. What the editor was shown is in the file "seen".
  static TOutcome Edit(const std::string& Script, const std::string& Arguments) {
    const std::string Editor = Office->Write("ed", "#!/bin/sh\nf=$1\ncat $f >>" + Office->Path("seen") + "\n" + Script);
    std::filesystem::permissions(Editor, std::filesystem::perms::owner_all);
    std::filesystem::remove(Office->Path("seen"));
    return EditWith(Editor, Arguments);
  }
  static TOutcome EditWith(const std::string& Editor, const std::string& Arguments) {
    return Office->Shell("env -u VISUAL -u DISPLAY -u WAYLAND_DISPLAY EDITOR=" + Editor +
                         " timeout 60 script -qec '" OXSUPER " --config " + Office->ConfigFile() + " " + Arguments +
                         "' /dev/null </dev/null");
  }
};

TEST_F(Editors, ShowTheRequestAndTheAnswerButNeverTheToken) {
  const std::size_t Tokens = Office->Count("/auth/token");
  EXPECT_EQ(0, Edit("", "--edit-request --edit-response batch validate " + PayRun).Exit);
  EXPECT_EQ(Tokens + 1, Office->Count("/auth/token"));
  const std::string Text = ReadFile(Office->Path("seen"));
  for (const char* Title : {"# Edit Request\n", "# Edit Response\n"})
    EXPECT_TRUE(Holds(Text, Title) && Text.find(Title) == Text.rfind(Title)) << Text;
  EXPECT_TRUE(Holds(Text, "\"employers\": [\n") && Holds(Text, "# status: 200\n")) << Text;
  EXPECT_FALSE(Holds(Text, "client_secret") || Holds(Text, "access_token")) << Text;
}

TEST_F(Editors, ChangeWhatIsSentAndWhatIsRead) {
  const TOutcome Changed = Edit("sed -i s/1984-03-19/2084-03-19/ $f", "--edit-request batch validate " + PayRun);
  EXPECT_EQ(5, Changed.Exit) << Changed.Out;
  EXPECT_TRUE(Holds(Changed.Out, "DOB_IN_FUTURE")) << Changed.Out;
  EXPECT_EQ(6, Edit("sed -i 's/^# status: 200/# status: 503/' $f", "ping --edit-response").Exit);
  EXPECT_EQ(0, Edit("exit 1", "ping --edit-response").Exit) << "the answer as it came";
  const TOutcome Unfit = EditWith("/no/such", "ping --edit-response");
  EXPECT_TRUE(Unfit.Exit == 0 && Holds(Unfit.Out, "warning: Cannot start the editor /no/such")) << Unfit.Out;
}

TEST_F(Editors, KeepARequestBack) {
  const std::size_t Before = Office->Count(SubmitPath);
  const std::string Submit = "--edit-request batch submit " + PayRun;
  for (const char* Script : {"exit 1", ": >$f", "sed -i 's/^# skip: no/# skip: yes/' $f"}) {
    EXPECT_EQ(3, Edit(Script, Submit).Exit) << Script;
    EXPECT_EQ("", Member(Office->Run("--json batch status").Out, "outcome"));
  }
  const TOutcome Nobody = Office->Run(Submit);
  EXPECT_TRUE(Nobody.Exit == 1 && Holds(Nobody.Error, "No editor is available, nothing was sent")) << Nobody.Error;
  EXPECT_EQ(Before, Office->Count(SubmitPath));

  // An answer that was written by hand proves nothing: the file stays submitted.
  ASSERT_EQ(0, Edit("", Submit).Exit);
  EXPECT_EQ(Before + 1, Office->Count(SubmitPath));
  const std::string Process = Member(Office->Run("--json batch status").Out, "processId");
  const char* const ByHand = "sed -i 's/^# skip: no/# skip: yes/;s/^# status: 0/# status: 200/' $f";
  const TOutcome Cancelled = Edit(ByHand, "--edit-request --edit-response batch cancel " + Process);
  EXPECT_TRUE(Cancelled.Exit == 0 && Holds(Cancelled.Out, "was skipped in the editor: nothing was sent"))
      << Cancelled.Out;
  EXPECT_EQ("accepted", Member(Office->Run("--json batch status").Out, "outcome"));
  EXPECT_EQ(3, Office->Run("batch submit " + PayRun).Exit);
  EXPECT_EQ(3, Edit(ByHand, "--edit-request --edit-response batch submit --again " + PayRun).Exit);
}

}  // namespace
}  // namespace oxSuperAPI
