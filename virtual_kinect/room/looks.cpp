#include "virtual_kinect/room/looks.hpp"

namespace halcyra::virtual_kinect::room {

namespace {

// A man in his thirties: short dark hair, stubble, blue shirt.
PersonLook owner_look() {
  PersonLook look;
  look.head.jaw = 1.05F;
  look.head.brow_weight = 1.15F;
  look.head.beard = 0.45F;
  look.head.skin = {0.86F, 0.67F, 0.56F};
  look.head.hair = {0.34F, 0.25F, 0.18F};
  look.head.brows = {0.20F, 0.13F, 0.10F};
  look.head.iris = {0.30F, 0.38F, 0.42F};
  look.head.seed = 11;
  look.body.shoulders = 1.04F;
  look.body.clothing = Clothing::kShirt;
  look.body.top = {0.30F, 0.45F, 0.66F};
  look.body.accent = {0.88F, 0.90F, 0.92F};
  look.body.trousers = {0.24F, 0.25F, 0.30F};
  return look;
}

// A young woman: long auburn hair, freckles, green sweater.
PersonLook visitor_look() {
  PersonLook look;
  look.head.width = 0.95F;
  look.head.height = 0.97F;
  look.head.jaw = 0.88F;
  look.head.chin = 0.85F;
  look.head.nose = 0.84F;
  look.head.nose_width = 0.86F;
  look.head.eye_size = 1.14F;
  look.head.cheeks = 1.06F;
  look.head.lips = 1.45F;
  look.head.brow_weight = 0.75F;
  look.head.brow_height = 4.0F;
  look.head.freckles = 1.0F;
  look.head.hair_cut = HairCut::kLongWavy;
  look.head.skin = {0.93F, 0.76F, 0.67F};
  look.head.hair = {0.50F, 0.24F, 0.13F};
  look.head.brows = {0.42F, 0.23F, 0.15F};
  look.head.lip_color = {0.76F, 0.36F, 0.37F};
  look.head.iris = {0.28F, 0.42F, 0.30F};
  look.head.seed = 23;
  look.body.height = 0.95F;
  look.body.shoulders = 0.86F;
  look.body.girth = 0.88F;
  look.body.clothing = Clothing::kSweater;
  look.body.top = {0.36F, 0.52F, 0.42F};
  look.body.accent = {0.46F, 0.61F, 0.50F};
  look.body.trousers = {0.30F, 0.36F, 0.48F};
  look.body.top_infrared = 0.62F;
  return look;
}

// An older man: bald, grey beard, glasses, brown skin, grey jacket.
PersonLook guest_look() {
  PersonLook look;
  look.head.width = 1.05F;
  look.head.jaw = 1.10F;
  look.head.chin = 1.05F;
  look.head.nose = 1.10F;
  look.head.nose_width = 1.30F;
  look.head.eye_distance = 1.02F;
  look.head.eye_size = 0.92F;
  look.head.lips = 1.15F;
  look.head.beard = 1.1F;
  look.head.wrinkles = 1.35F;
  look.head.brow_weight = 1.3F;
  look.head.glasses = true;
  look.head.hair_cut = HairCut::kBald;
  look.head.skin = {0.72F, 0.53F, 0.42F};
  look.head.hair = {0.58F, 0.55F, 0.52F};
  look.head.brows = {0.26F, 0.23F, 0.21F};
  look.head.lip_color = {0.54F, 0.32F, 0.29F};
  look.head.iris = {0.20F, 0.13F, 0.09F};
  look.head.seed = 37;
  look.body.height = 1.02F;
  look.body.shoulders = 1.08F;
  look.body.girth = 1.16F;
  look.body.clothing = Clothing::kJacket;
  look.body.top = {0.36F, 0.34F, 0.36F};
  look.body.accent = {0.46F, 0.30F, 0.31F};
  look.body.trousers = {0.35F, 0.32F, 0.28F};
  look.body.top_infrared = 0.42F;
  return look;
}

}  // namespace

const PersonLook& look_of(Person person) {
  static const std::array<PersonLook, 3> looks = {owner_look(), visitor_look(), guest_look()};
  return looks[static_cast<std::size_t>(person)];
}

}  // namespace halcyra::virtual_kinect::room
