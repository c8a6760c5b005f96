#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QPlainTextEdit>
#include <QSet>
#include <QTest>

#include "oxSuperAPI/editor/display.h"
#include "oxSuperAPI/editor/editor_dialog.h"

namespace oxSuperAPI::tests {
namespace {

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
