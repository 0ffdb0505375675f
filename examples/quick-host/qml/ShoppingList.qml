pragma Singleton
import QtQuick

ListModel {
    /// Adds what a recipe needs for so many people.
    function addRecipe(recipe: Recipe, servings: int) {
        for (const ingredient of recipe.ingredients)
            append({"title": ingredient, "origin": qsTr("%1, for %2").arg(recipe.title).arg(servings), "isBought": false})
    }

    ListElement { title: "Coffee"; origin: ""; isBought: false }
    ListElement { title: "Dish soap"; origin: ""; isBought: true }
}
