// What the people in the room look like.
#pragma once

#include <array>
#include <cstdint>

#include "virtual_kinect/room/vec3.hpp"

namespace halcyra::virtual_kinect::room {

// What skin gives back of the sensor's infrared light. In infrared, all skin looks much the same.
constexpr float kSkinInfrared = 0.62F;

enum class HairCut { kShortSides, kLongWavy, kBald };

struct HeadLook {
  // Factors on the measures of an average head.
  float width = 1.0F;
  float height = 1.0F;
  float jaw = 1.0F;
  float chin = 1.0F;
  float nose = 1.0F;
  float nose_width = 1.0F;
  float eye_distance = 1.0F;
  float eye_size = 1.0F;
  float cheeks = 1.0F;
  float lips = 1.0F;
  float mouth_width = 1.0F;
  float brow_weight = 1.0F;
  float brow_height = 0.0F;  // millimetres up
  float beard = 0.0F;        // 0: none, 0.4: stubble, 1: full
  float freckles = 0.0F;     // 0: none, 1: many
  float wrinkles = 0.0F;     // 0: none, 1: deep
  bool glasses = false;
  HairCut hair_cut = HairCut::kShortSides;
  // Displayed colours, red, green, blue.
  Vec3 skin{0.86F, 0.68F, 0.57F};
  Vec3 hair{0.20F, 0.14F, 0.10F};
  Vec3 brows{0.20F, 0.14F, 0.10F};
  Vec3 lip_color{0.70F, 0.42F, 0.39F};
  Vec3 iris{0.30F, 0.22F, 0.14F};
  std::uint32_t seed = 1;  // of skin and hair patterns
};

enum class Clothing { kShirt, kSweater, kJacket };

struct BodyLook {
  // Factors on the measures of an average body, 1.75 m high.
  float height = 1.0F;
  float shoulders = 1.0F;
  float girth = 1.0F;
  Clothing clothing = Clothing::kShirt;
  // Displayed colours, red, green, blue.
  Vec3 top{0.25F, 0.35F, 0.50F};
  Vec3 accent{0.90F, 0.90F, 0.88F};
  Vec3 trousers{0.20F, 0.22F, 0.27F};
  Vec3 shoes{0.15F, 0.12F, 0.10F};
  float top_infrared = 0.5F;  // see Reflectance
};

struct PersonLook {
  HeadLook head;
  BodyLook body;
};

enum class Person { kOwner, kVisitor, kGuest };
constexpr std::array<Person, 3> kAllPeople = {Person::kOwner, Person::kVisitor, Person::kGuest};

const PersonLook& look_of(Person person);

}  // namespace halcyra::virtual_kinect::room
