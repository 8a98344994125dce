// SPDX-License-Identifier: GPL-3.0-or-later
#include "game/world.h"

namespace corvid::practice {

namespace {

constexpr Sight SightTable[] = {
    {Square, "fountain", "The water is clear and cold. Coins glint at the bottom, but they belong to the wishes."},
    {Square, "clock", "Only its ticking comes down here. The way up begins at the foot of the tower, to the north."},
    {TowerFoot, "tower", "Forty feet of grey stone. The stair goes up."},
    {TowerFoot, "stair", "Worn steps, winding up."},
    {TowerTop, "bell", "A bronze bell, green with age. Ring it and the whole village hears."},
    {TowerTop, "rope", "It is as thick as your wrist. Ring the bell with it."},
    {Garden, "bees", "They take no notice of you."},
    {Shop, "scale", "A brass scale, polished every day."},
    {Shop, "shelves", "Type list to hear what is on them."},
    {Inn, "fire", "It crackles."},
    {Inn, "fiddler", "His eyes are closed. He knows one tune, and he likes it."},
    {Cellar, "barrels", "All of them are sealed."},
    {Cellar, "sacks", "Flour trickles out of tooth-sized holes."},
    {Orchard, "scarecrow", "It could use a cap."},
    {Orchard, "trees", "They are older than the inn."},
    {Pond, "water", "Something silver moves down there, and is gone."},
    {Pond, "wheel", "Moss has grown over it."},
    {Gate, "pillars", "Names are scratched into the stone. None of them is yours."},
    {Smithy, "anvil", "Bright where the hammer falls."},
    {Smithy, "forge", "Too hot to come near."},
    {BramblePath, "hole", "It goes down. Whatever lives there is bigger than a badger."},
    {Den, "roots", "They brush your face."},
};

constexpr ItemKind ItemTable[] = {
    {"apple", "a red apple", "A little wrinkled, but sweet. You could eat it.", Use::Eat, 3, 0, Orchard},
    {"stick", "a stout stick", "Better than bare hands. Wield it.", Use::Weapon, 1, 2, Orchard},
    {"feather", "a black feather", "It shimmers green and purple. A raven lost it.", Use::Nothing, 0, 2, TowerTop},
    {"rose", "a white rose", "It smells of summer.", Use::Nothing, 0, 2, Garden},
    {"coins", "a few gold coins", "Three pieces of gold, wet from the pond.", Use::Gold, 3, 0, Pond},
    {"letter", "a folded letter",
     "It says: Friend, whoever reads this to you reads it well. When you have had enough of a long text, tap Control "
     "and it is quiet. Yours, Quill.",
     Use::Read, 0, 0, Inn},
    {"horseshoe", "a bent horseshoe", "It will bring luck, says Hob.", Use::Nothing, 0, 3, Smithy},
    {"tail", "a rat tail", "Pell pays for these.", Use::Nothing, 0, 4, None},
    {"tusk", "a boar tusk", "As long as your forearm. Pell would give a lot for it.", Use::Nothing, 0, 40, None},
    {"sword", "a short sword", "Plain and sharp. Wield it.", Use::Weapon, 5, 14, None},
    {"cloak", "a leather cloak", "Thick enough to turn a tooth. Wear it.", Use::Wear, 1, 8, None},
    {"cap", "a woollen cap", "It would suit a scarecrow. Wear it.", Use::Wear, 0, 3, None},
    {"potion", "a green potion", "It promises to mend whatever ails you. Drink it.", Use::Drink, 15, 5, None},
    {"pie", "a mushroom pie", "Still warm. Eat it.", Use::Eat, 8, 3, None},
    {"ale", "a mug of ale", "Brown, with a white head. Drink it.", Use::Drink, 4, 1, None},
};

constexpr std::string_view PellGoods[] = {"sword", "cloak", "cap", "potion"};
constexpr std::string_view MartaGoods[] = {"pie", "ale"};

constexpr ShopStock ShopTable[] = {
    {Shop, "Pell", PellGoods},
    {Inn, "Marta", MartaGoods},
};

constexpr BeastKind BeastTable[] = {
    {"rat", "a cellar rat", "Fat, grey, and not at all shy.", "bites", Cellar, 8, 45, 1, 2, 4, 10, "tail"},
    {"boar", "a wild boar", "A mountain of bristles with two yellow tusks. Come with a sword, and with a potion.",
     "gores", Den, 30, 75, 3, 6, 0, 50, "tusk"},
};

constexpr Answer MartaAnswers[] = {
    {"ale", "Brewed it myself. One gold piece, just say buy ale."},
    {"pie", "Mushrooms and thyme. It puts you back on your feet."},
    {"rat", "In my cellar, yes! Go down and get rid of it, and keep what it has stolen."},
    {"cellar", "Down the ladder. Mind the rat."},
    {"music", "The same tune for eleven years. When you go out, it stops. That is why I like to go out."},
    {"boar", "South of the gate. Buy a sword from Pell before you go."},
    {"hello", "Welcome to the Sleeping Crow, dear. Ask me about the ale, the pie or the rat."},
    {"", "I would not know about that, dear. Ask me about the ale, the pie or the rat."},
};
constexpr Answer PellAnswers[] = {
    {"sword", "Fourteen pieces of gold, and it never comes back for repair."},
    {"gold", "The rat hoards it, and I pay for tails. For a tusk I pay more."},
    {"boar", "Bring me a tusk and I will pay you twenty."},
    {"hello", "Good day! Type list to hear what I have."},
    {"", "Buy something or sell something. Talk is free elsewhere."},
};
constexpr Answer QuillAnswers[] = {
    {"hello", "Caw! I teach. Ask me about enter, lines, control, configure, character, connect or session."},
    {"", "Caw! Never heard of it. Ask me about enter, lines, control, configure, character, connect or session."},
};
constexpr Answer HobAnswers[] = {
    {"fight", "Wield the best you have, watch the first number of your prompt, and flee before it is two."},
    {"boar", "It has more life in it than you have. A cloak helps, a potion helps more."},
    {"sword", "I make them, Pell sells them."},
    {"hello", "Hm. Ask about fighting, or let me work."},
    {"", "Hm? The forge is loud. Ask about fighting."},
};

constexpr Person PersonTable[] = {
    {"quill", "Quill", "Quill the raven sits on the rim of the fountain.",
     "An old raven with one white feather. It looks at you as a teacher does.", Square, true, QuillAnswers},
    {"marta", "Marta", "Marta the innkeeper wipes the bar.", "Round, quick and friendly.", Inn, false, MartaAnswers},
    {"pell", "Pell", "Pell the shopkeeper counts his cards.", "Thin, with a pencil behind each ear.", Shop, false,
     PellAnswers},
    {"hob", "Hob", "Hob the smith bends over the anvil.", "Arms like tree trunks.", Smithy, false, HobAnswers},
};

}  // namespace

std::span<const Sight> Sights() {
  return SightTable;
}
std::span<const ItemKind> ItemKinds() {
  return ItemTable;
}
std::span<const BeastKind> BeastKinds() {
  return BeastTable;
}
std::span<const Person> People() {
  return PersonTable;
}

int FindItemKind(std::string_view word) {
  int kind = 0;
  for (const ItemKind& item : ItemTable) {
    if (item.Word == word) return kind;
    ++kind;
  }
  return None;
}

const ShopStock* ShopIn(int room) {
  for (const ShopStock& shop : ShopTable) {
    if (shop.Room == room) return &shop;
  }
  return nullptr;
}

}  // namespace corvid::practice
