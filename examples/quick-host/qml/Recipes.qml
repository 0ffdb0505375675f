pragma Singleton
import QtQuick
import Larder

QtObject {
    readonly property list<Recipe> all: [
        Recipe {
            title: "Lemon lentil soup"
            summary: "Bright, thick, and done before the bread is warm."
            minutes: 35
            servings: 4
            tint: "#E9C46A"
            fill: "#D98E2B"
            ingredients: ["250 g red lentils", "1 onion", "2 carrots", "1 lemon", "1 l vegetable stock", "1 tsp cumin"]
            steps: [
                "Chop the onion and the carrots and soften them in a little oil, with the cumin.",
                "Add the lentils and the stock and let it simmer for twenty minutes.",
                "Blend half of it, stir in the juice of the lemon, and season."
            ]
        },
        Recipe {
            title: "Skillet potatoes"
            summary: "Crisp on one side, soft on the other."
            minutes: 40
            servings: 2
            tint: "#E7B08A"
            fill: "#B5623A"
            ingredients: ["600 g small potatoes", "3 tbsp olive oil", "2 cloves of garlic", "1 sprig of rosemary", "salt"]
            steps: [
                "Halve the potatoes and lay them in a cold pan with the oil, cut side down.",
                "Cover and cook at medium heat for twenty-five minutes without turning them.",
                "Add garlic and rosemary, uncover, and give it five minutes more."
            ]
        },
        Recipe {
            title: "Green bean salad"
            summary: "Goes with everything, waits for nobody."
            minutes: 20
            servings: 4
            tint: "#A8CFA0"
            fill: "#4F8A4A"
            ingredients: ["500 g green beans", "1 shallot", "1 tbsp mustard", "2 tbsp vinegar", "4 tbsp oil", "dill"]
            steps: [
                "Boil the beans for six minutes and cool them in cold water.",
                "Shake mustard, vinegar, oil and the chopped shallot in a jar.",
                "Toss all of it and leave it for ten minutes."
            ]
        },
        Recipe {
            title: "Tomato rice"
            summary: "One pot, one spoon."
            minutes: 30
            servings: 3
            tint: "#EFA7A0"
            fill: "#C4473A"
            ingredients: ["300 g rice", "400 g ripe tomatoes", "1 onion", "1 bay leaf", "500 ml water", "parsley"]
            steps: [
                "Fry the chopped onion and the rice until the grains turn glassy.",
                "Add the tomatoes, the bay leaf and the water, and bring it to the boil.",
                "Cover and leave it at low heat for eighteen minutes."
            ]
        },
        Recipe {
            title: "Oat pancakes"
            summary: "No flour in the house? Then these."
            minutes: 25
            servings: 2
            tint: "#D9C3A5"
            fill: "#9A7246"
            ingredients: ["150 g rolled oats", "2 eggs", "200 ml milk", "1 ripe banana", "1 tsp baking powder"]
            steps: [
                "Blend everything and let the batter rest for ten minutes.",
                "Bake small pancakes in a buttered pan, two minutes each side."
            ]
        },
        Recipe {
            title: "Apple crumble"
            summary: "The end of a Sunday."
            minutes: 50
            servings: 6
            tint: "#C9D58F"
            fill: "#8A9A34"
            ingredients: ["1 kg apples", "150 g flour", "100 g butter", "100 g brown sugar", "1 tsp cinnamon"]
            steps: [
                "Slice the apples into a dish and dust them with the cinnamon.",
                "Rub flour, butter and sugar between your fingers until it crumbles.",
                "Cover the apples with it and bake for thirty-five minutes at 190 degrees."
            ]
        }
    ]
}
