#pragma once

#include <memory>
#include <string>

namespace quintara::bench {

/// One picture of quintara-chart: the demonstration market's bars of 24 months, 24 level lines.
class PictureScene {
 public:
  /// The chart area's size in pixels.
  PictureScene(int width, int height);
  ~PictureScene();
  /// From prices to the bytes of the file.
  void draw();
  /// The encoding alone.
  void encode();

 private:
  struct Parts;
  std::unique_ptr<Parts> parts_;
};

}  // namespace quintara::bench
