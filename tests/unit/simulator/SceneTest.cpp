#include "simulator/Scene.h"

#include <gtest/gtest.h>

using namespace korvax::sim;

TEST(Scene, IsKnownByName) {
  EXPECT_EQ(SceneFromName("none"), Scene::None);
  EXPECT_EQ(SceneFromName("pixels"), Scene::Pixels);
  EXPECT_EQ(SceneFromName("Strips"), Scene::Strips);
  for (const char* text : {"", "pixel", " pixels", "stripes", "0"}) {
    EXPECT_FALSE(SceneFromName(text)) << text;
  }
}

TEST(Scene, HasARoundSpotOffTheCentre) {
  const Place centre{0.66, 0.40};
  EXPECT_NEAR(Brightness(centre), 1.15, 1e-9);
  for (const double distance : {0.05, 0.13, 0.2}) {
    const double below = Brightness({centre.x, centre.y + distance});
    EXPECT_NEAR(Brightness({centre.x + distance, centre.y}), below, 1e-9) << distance;
    EXPECT_NEAR(Brightness({centre.x - distance, centre.y}), below, 1e-9) << distance;
    EXPECT_NEAR(Brightness({centre.x, centre.y - distance}), below, 1e-9) << distance;
  }
  EXPECT_NEAR(Brightness({centre.x, centre.y + 0.13}), 0.15 + 0.6065, 1e-4);  // one sigma away
}

TEST(Scene, HasAWeakEvenBackgroundFarFromTheSpot) {
  for (const Place place : {Place{0.0, 0.0}, {0.0, 1.0}, {1.0, 1.0}, {0.1, 0.5}, {0.3, 0.95}, {0.5, 0.99}}) {
    EXPECT_NEAR(Brightness(place), 0.15, 0.01) << place.x << " " << place.y;
  }
}

TEST(Scene, IsNearlyDarkBehindTheBarAndNowhereElse) {
  for (const Place place : {Place{0.25, 0.12}, {0.3, 0.5}, {0.43, 0.87}}) {
    EXPECT_LT(Brightness(place), 0.02) << place.x << " " << place.y;
  }
  for (const Place place : {Place{0.24, 0.5}, {0.45, 0.5}, {0.3, 0.11}, {0.3, 0.89}}) {
    EXPECT_GT(Brightness(place), 0.14) << place.x << " " << place.y;
  }
}

TEST(Scene, IsNowhereDarkNorBrighterThanItSays) {
  for (int column = 0; column <= 200; ++column) {
    for (int row = 0; row <= 200; ++row) {
      const double brightness = Brightness({column / 200.0, row / 200.0});
      ASSERT_GT(brightness, 0.0) << column << " " << row;
      ASSERT_LE(brightness, Brightest) << column << " " << row;
    }
  }
}
