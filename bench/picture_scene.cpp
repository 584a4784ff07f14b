#include "picture_scene.hpp"

#include <optional>

#include "chartbook/captions.hpp"
#include "chartbook/png.hpp"
#include "chartbook/session.hpp"
#include "platform/headless/glyphs.hpp"
#include "service/desk/standard_sources.hpp"

namespace quintara::bench {

using namespace chartbook;

struct PictureScene::Parts {
  explicit Parts(PictureSize pictureSize) : size(pictureSize) {
    order.fields[kTicker] = "DEMO";
    order.fields[kSpan] = "24";
    setPoints(order, "A1=82.59,A2=80.1,B1=93.6,C1=86.5,A3=93.1,A4=94.2,B2=80.7,C2=85.3");
    order.fields[kShow] = "A1,A2,A3,A4";
    for (const char* set : {"A1", "A2", "A3", "A4"}) {
      order.fields[kTargets] += std::string(set) + "=1:1,1.382,1.618,";
    }
  }
  void draw() {
    session.emplace(glyphs, client, today, size);
    session->draw(order);
    nameChart(*session, "DEMO Daily");
  }
  const Date today = std::chrono::year{2026} / 11 / 23;
  const PictureSize size;
  FreeTypeGlyphs glyphs{1};
  quotes::QuoteDesk desk{quotes::standardSources({}, {}), [this] { return quotes::Day(today); }};
  DeskClient client{desk};
  Order order;
  std::optional<Session> session;
};

PictureScene::PictureScene(int width, int height)
    : parts_(std::make_unique<Parts>(PictureSize{width, height, 1})) {
  parts_->draw();
}
PictureScene::~PictureScene() = default;

void PictureScene::draw() {
  parts_->draw();
  encode();
}

void PictureScene::encode() { static_cast<void>(pngOf(parts_->session->chart().raster())); }

}  // namespace quintara::bench
