#pragma once

#include <cstdint>
#include <string>

#include "data/chart_state.hpp"
#include "platform/platform.hpp"

namespace quintara {

/// The quote service's two hosts, each `host`, `host:port` or `unix:NAME`, a socket in
/// the user's runtime folder.
struct QuoteHosts {
  std::string history;
  std::string quotes;
};

/// What a download needs from outside.
struct QuoteSource {
  HttpClient& Inet1;
  const Clock& clock;
  QuoteHosts hosts;
};

/// The first date asked for: 182, 365, 547 or 730 days back for daily bars by span, 220 weeks for
/// weekly, 120 calendar months (clamped to the month's last day) for monthly ones.
/// Throws TypeMismatch for an interval or span outside the boxes' entries.
Date startDate(std::int16_t iInterval, std::int16_t iDuration, Date today);

// What is sent of a ticker: every character as typed, unchanged in case, blanks at its ends
// included, in the table's keys s and z and in the quote's key s. Nothing is encoded here. On its
// way out (encodedUrl in platform/qt/http_client) a URL has only what a request line cannot hold
// percent-encoded: blanks, controls, "#" and bytes beyond ASCII. So "+" and "%" arrive as they are,
// and "&" ends the key's value.

/// Target of the historical table's request; months are sent as the calendar counts them.
std::string historyPath(const std::string& ticker, Date start, Date today, char intervalLetter);
/// Target of the current quote's request.
std::string quotePath(const std::string& ticker);

/// The current quote's reply as a row of the table: date, open, high, low, last, volume, stamped
/// with today's date. Its open is "N/A" when the service has none or reports 0.
/// Throws SubscriptOutOfRange for a reply of fewer than nine fields.
std::string quoteRow(const std::string& reply, Date today);

/// Downloads table and quote for the chosen ticker, span and interval and leaves the rows in
/// `sRows`, commas replaced by "@" and points by the user's separator where that is a comma.
/// Returns whether there is a row to build from; every run-time error and too little
/// memory are the result false. A
/// failure up to the second reply leaves the rows of the download before in place.
bool GetHistoricalData(ChartState& state, const QuoteSource& source);

}  // namespace quintara
