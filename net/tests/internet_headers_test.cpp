#include "internet_headers_access.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace corvalta::net {
namespace {

using Access = InternetHeadersAccess;
using Lines = std::vector<std::string>;

// Every entry in enumeration order as "name=value".
Lines entries(const InternetHeaders& headers) {
  Lines lines;
  for (std::int32_t i = 0; i < headers.Count(); ++i) {
    lines.push_back(headers.Name(i) + "=" + headers.Value(i));
  }
  return lines;
}

InternetHeaders parsed(const std::string& block) {
  InternetHeaders headers;
  Access::ParseHeaders(headers, block);
  return headers;
}

// A parsed block gives its headers in order, with line ends, folding and colons handled as
// mail and HTTP write them, and Source() gives the block back unchanged, even once emptied.
TEST(InternetHeadersTest, ParsesBlocks) {
  struct Case {
    const char* what;
    std::string block;
    Lines expected;
  };
  const std::vector<Case> cases = {
      {"stray LF stays in a CR LF value", "A: one\ntwo\r\nB: b", {"A=one\ntwo", "B=b"}},
      {"LF only", "HTTP/1.0 200 OK\nA: 1\nB: 2\n", {"A=1", "B=2"}},
      {"CR only", "HTTP/1.0 200 OK\rA: 1\rB: 2", {"A=1", "B=2"}},
      {"folded with a blank and a tab", "A: one\r\n two\r\n\tthree\r\nB: b",
       {"A=one two three", "B=b"}},
      {"blanks before a value go, in names and behind it stay, colons of values too",
       "Odd Name :  v  \r\nDate:\tTue, 08:12:31", {"Odd Name =v  ", "Date=Tue, 08:12:31"}},
      {"lines without a colon are dropped", "garbage\r\n\r\nA: 1\r\nmore garbage", {"A=1"}},
  };
  for (const Case& c : cases) {
    InternetHeaders headers = parsed(c.block);
    EXPECT_EQ(entries(headers), c.expected) << c.what;
    headers.DeleteAllHeaders();
    EXPECT_EQ(headers.Source(), c.block) << c.what;
  }
}

// Values are found by name in any case and by number; numbers run 0, 1, 2 and stop at the end.
TEST(InternetHeadersTest, ReadsValuesByNameAndNumber) {
  const InternetHeaders headers =
      parsed("HTTP/1.0 200 OK\r\nReceived: a\r\nX: x\r\nreceived: b\r\nRECEIVED: c");
  const Lines found = {
      std::to_string(headers.Count()), std::to_string(headers.NameCount("Received")),
      std::to_string(headers.NameCount("Missing")), headers.Value("rEcEiVeD"),
      headers.Value("Received", 2), headers.Value("Received", 3), headers.Value("Received", -4),
      headers.Value(4), headers.Name(-1), headers.CommaSeparatedValues("received")};
  EXPECT_EQ(found, (Lines{"4", "3", "0", "a", "c", "", "a", "", "", "a, b, c"}));
}

// Each change to a list leaves the entries, their order and their numbering as stated, and
// Source() of a list built by hand is its formatted text.
TEST(InternetHeadersTest, ChangesTheList) {
  using Change = std::function<void(InternetHeaders&)>;
  struct Case {
    const char* what;
    Change change;
    std::string expected;
    // The values of T by number, up to the first missing one.
    std::string valuesOfT;
  };
  // Start: T=1, Other=o, T=2, T=3.
  const std::vector<Case> cases = {
      {"SetHeader on three values leaves the new one",
       [](InternetHeaders& h) { h.SetHeader("t", "new"); }, "Other: o\r\nt: new", "new"},
      {"Delete number 1 keeps the first and moves the third",
       [](InternetHeaders& h) { h.Delete("T", 1); }, "T: 1\r\nOther: o\r\nT: 3", "1, 3"},
      {"append after a delete fills the closed-up numbers",
       [](InternetHeaders& h) {
         h.Delete("T", 1);
         h.AppendHeader("T", "4");
         h.AppendHeader("T", "5");
       },
       "T: 1\r\nOther: o\r\nT: 3\r\nT: 4\r\nT: 5", "1, 3, 4, 5"},
      {"a gap stops NameCount and Delete(name)",
       [](InternetHeaders& h) {
         h.SetHeader("T", "far", 5);
         h.Delete("T");
       },
       "Other: o\r\nT: far", ""},
  };
  for (const Case& c : cases) {
    InternetHeaders headers;
    headers.AppendHeader("T", "1");
    headers.AppendHeader("Other", "o");
    headers.AppendHeader("T", "2");
    headers.AppendHeader("T", "3");
    c.change(headers);
    EXPECT_EQ(headers.Source(), c.expected) << c.what;
    EXPECT_EQ(headers.CommaSeparatedValues("T"), c.valuesOfT) << c.what;
  }
}

// Mail order puts the well-known headers first, joins the values of To and CC, and never
// writes BCC.
TEST(InternetHeadersTest, FormatsMail) {
  struct Case {
    const char* what;
    std::string block;
    std::string mail;
  };
  const std::vector<Case> cases = {
      {"subject, two To and another", "X-Other: o\r\nTo: a\r\nSubject: s\r\nto: b",
       "Subject: s\r\nTo: a, b\r\nX-Other: o"},
      {"only BCC", "BCC: hidden", ""},
      {"Received right behind Return-Path, ahead of Date",
       "Date: d\r\nReceived: 1\r\nReceived: 2\r\nReturn-Path: r\r\nReceived: 3\r\nReturn-Path: r2",
       "Return-Path: r\r\nReceived: 1\r\nReceived: 2\r\nReceived: 3\r\nDate: d"},
      {"names in small letters are written once, as the table spells them",
       "subject: s\r\ncc: c1\r\nfrom: f\r\ncc: c2", "Subject: s\r\nFrom: f\r\nCC: c1, c2"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Access::FormatEmailHeaders(parsed(c.block)), c.mail) << c.what;
  }
}

}  // namespace
}  // namespace corvalta::net
