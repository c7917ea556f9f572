"""The stations of the demonstration, in the order in which a visitor comes through them.

A station is a function that acts and then waits until the screen shows what it must; its name is
the picture's name, its docstring what the visitor sees. A new screen adds its functions here and
their names to STATIONS.
"""

import os
import subprocess

from driver import NotReached, output_of, wait

CATALOGUE = "Tarvo.mdb"
EXIT = "Sair do catálogo"
NUMBER_BOX = "Nº Tarvo"
CUSTOMER_COMBO = "Cliente ou concorrente"
PARTS_GRID = "Resultado da pesquisa"
VEHICLE_BOX = "Veículo"
VEHICLE_GRID = "Veículos encontrados"
GALLERY = "Figuras do catálogo"
FIRST_CAPTION = "Ajustadores de folga"
# A drop-down list is called by the row that it shows, where it shows one.
KIND_COMBO = "TODOS OS TIPOS"
FOUND_PARTS_GRID = "Peças"
FOUND_VEHICLES_GRID = "Veículos da peça"
COMPONENT_GRID = "Componentes"
KIT_GRID = "Jogos de reparo do componente"
KIT_FILTER = "TODOS OS COMPONENTES"
CHECK_ROW = "Verificar atualizações automaticamente"
PROXY_USER = "Usuário do proxy"
PROXY_PASSWORD = "Senha do proxy"
TOUR_PAGES = 5
HELP_TITLE = "Ajuda do Catálogo TARVO-LINDEN"
PRINTER_DIALOG = "Imprimir"
PRINTED = "figura-e-lista"  # the printed file, and with a number its pages

UPDATE_QUESTION = "Existem Novas Atualizações. Deseja Instalar agora?"
UPDATE_DONE = "Atualização concluída com sucesso."

# Places on the search screen, design pixels.
CHECK_FOR_UPDATES = (578, 17)
OPEN_PARTS = (634, 161)
OPEN_VEHICLES = (704, 315)
OPEN_GALLERY = (703, 466)
HELP = (53, 471)
TOUR = (56, 416)
MINIMISE = (790, 7)
LEAVE = (49, 524)
SETTINGS = (725, 17)
BACKGROUND = (300, 550)
TYPE_NUMBER = (76, 130)
TYPE_DESCRIPTION = (274, 130)
CHOOSE_CUSTOMER = (490, 105)
TYPE_CUSTOMERS_NUMBER = (490, 130)
CHOOSE_KIND = (630, 130)
FIRST_FOUND_ROW = (200, 150)

# Left, top, width and height of what shows a picture.
PHOTO = (85, 315, 250, 195)
THUMBNAILS = [(177 + 140 * i, 410, 120, 75) for i in range(4)]

# Places on the screens of the part views.
TO_COMPONENT_LIST = (393, 558)
TO_PART_RESULT = (392, 558)
TO_SEARCH = (264, 558)
SEEK_ITEM = (76, 160)
CHOOSE_KIT = (620, 104)
PRINT_LIST = (713, 441)
TO_FIGURE = (530, 558)
FIRST_FOUND_PART = (200, 163)
FROM_FIGURE_TO_LIST = (537, 558)
BESIDE_FIGURE = (710, 380)


def retype(tour, place, text):
    """Replaces the content of the box at this place."""
    tour.click(*place)
    tour.press("ctrl+a")
    tour.press("Delete")
    tour.type(text)


def first_rows(tour, grid, fits, what):
    """Waits until the grid shows rows and the first of them fits."""
    def there():
        table = tour.find("table", grid)
        return table and table.rows() > 0 and fits(table)
    return wait(what, there)


def shows_picture(tour, place):
    """A photograph has many shades, a frame or a line of text only some."""
    return tour.colours(*place) > 200


def splash(tour):
    """The splash, with the catalogue already open behind it."""
    tour.start()
    wait("a window", tour.windows)
    catalogue = os.path.join(tour.data, CATALOGUE)
    wait("the catalogue open during the splash",
         lambda: tour.has_open(catalogue) and not tour.find("push button", EXIT))


def search_screen(tour):
    """The search screen with none of its panels."""
    tour.await_node("push button", EXIT)
    wait("no panel open at first",
         lambda: not tour.find("text", NUMBER_BOX) and not tour.find("text", VEHICLE_BOX))


def parts_by_number(tour):
    """"1" in the number box: rows whose numbers begin with it."""
    tour.click(*OPEN_PARTS)
    tour.await_node("text", NUMBER_BOX)
    tour.type("1")
    first_rows(tour, PARTS_GRID, lambda t: t.cell(0, 0).startswith("1"),
               "rows whose number begins with 1")


def description_with_asterisk(tour):
    """"*anel" in the description box: the word anywhere in the description."""
    retype(tour, TYPE_NUMBER, "")
    retype(tour, TYPE_DESCRIPTION, "*anel")
    first_rows(tour, PARTS_GRID,
               lambda t: all("ANEL" in t.cell(row, 1).upper() for row in range(min(t.rows(), 5))),
               "rows with the word in their description")


def customers_number(tour):
    """A vehicle maker chosen in the combo, "1" in the box under it: his numbers."""
    retype(tour, TYPE_DESCRIPTION, "")
    tour.choose(CHOOSE_CUSTOMER, CUSTOMER_COMBO, "Nº Kessvold")
    tour.click(*TYPE_CUSTOMERS_NUMBER)
    tour.type("1")
    first_rows(tour, PARTS_GRID, lambda t: t.cell(0, 2).startswith("1"),
               "rows whose customer number begins with 1")


def part_result(tour):
    """A relay valve opened by a double click: the part, its vehicles, its photo."""
    tour.press("ctrl+a")
    tour.press("Delete")
    tour.choose(CHOOSE_KIND, KIND_COMBO, "Peças")
    # The display has no accents on its keys; a question mark stands for any one letter.
    retype(tour, TYPE_DESCRIPTION, "v?lvula rel?")
    first_rows(tour, PARTS_GRID, lambda t: t.cell(0, 3) == "Peça", "parts alone")
    tour.click(*FIRST_FOUND_ROW, times=2)
    first_rows(tour, FOUND_PARTS_GRID, lambda t: "relé" in t.cell(0, 1), "the part that was opened")
    first_rows(tour, FOUND_VEHICLES_GRID, lambda t: t.cell(0, 1), "its vehicles")
    wait("its photo", lambda: shows_picture(tour, PHOTO))


def component_list(tour):
    """Its components, by description."""
    tour.click(*TO_COMPONENT_LIST)
    first_rows(tour, COMPONENT_GRID, lambda t: t.rows() > 4, "the components")


def seek_by_item(tour):
    """"1" in the item box: the list in the order of items, the cursor on the first."""
    tour.click(*SEEK_ITEM)
    tour.type("1")
    first_rows(tour, COMPONENT_GRID, lambda t: t.cell(0, 0).strip() == "1", "the list by item")


def kit_filter(tour):
    """The components of one repair kit, with the kits of the first of them."""
    combo = tour.await_node("combo box", KIT_FILTER)
    kit = [row.name for row in next(combo.children()).children()][0]
    before = tour.await_node("table", COMPONENT_GRID).rows()
    tour.choose(CHOOSE_KIT, KIT_FILTER, kit)
    first_rows(tour, COMPONENT_GRID, lambda t: t.rows() < before, "the kit's components alone")
    first_rows(tour, KIT_GRID, lambda t: t.cell(0, 0), "the kits of the component")


def print_window(tour):
    return next((w for w in tour.windows() if w.find("push button", "Cancelar")), None)


def print_options(tour):
    """The print dialog from the list, with the figure ticked besides."""
    tour.click(*PRINT_LIST)
    window = wait("the print dialog", lambda: print_window(tour))
    boxes = [window.find("check box", name) for name in ("Figura detalhada", "Lista de componentes")]
    tour.click_on(boxes[0])
    wait("both boxes ticked", lambda: all(box.ticked for box in boxes))


def printer_dialog(tour):
    """The system's printer dialog, with a file to print to."""
    tour.click_on(print_window(tour).find("push button", "OK"))
    dialog = wait("the printer dialog", lambda: tour.window(PRINTER_DIALOG))
    tour.click_on(dialog.find("text", "Arquivo de saída:"))
    tour.press("ctrl+a")
    tour.type(os.path.join(tour.pictures, PRINTED + ".pdf"))


def printed(tour):
    """The list again; figure and list in their file, and its pages as pictures."""
    tour.click_on(tour.window(PRINTER_DIALOG).find("push button", "Imprimir"))
    paper = os.path.join(tour.pictures, PRINTED)
    wait("the printed file", lambda: os.path.exists(paper + ".pdf"))
    subprocess.run(["pdftoppm", "-r", "150", "-png", paper + ".pdf", paper], check=True, timeout=60)
    wait("the end of the print dialog", lambda: not print_window(tour))
    if "Figura Detalhada" not in output_of("pdftotext", "-l", 1, paper + ".pdf", "-"):
        raise NotReached("the figure is not on the first page")
    if "Lista de Componentes" not in output_of("pdftotext", "-f", 2, paper + ".pdf", "-"):
        raise NotReached("the list is not on the second page")


def back_to_the_part(tour):
    """Back to the part, as it was left."""
    tour.click(*TO_PART_RESULT)
    first_rows(tour, FOUND_PARTS_GRID, lambda t: "relé" in t.cell(0, 1), "the part again")


def number(tour, component="Anel"):
    """The number on the figure of the first item whose component has this word."""
    return next((node for window in tour.windows() for node in window.walk()
                 if node.name.startswith("Item ") and component in node.name and node.showing), None)


def item_and_component(node):
    """"Item 12, Anel" is the name of a number."""
    return node.name.removeprefix("Item ").split(", ", 1)


def item_in_list(tour):
    table = tour.find("table", COMPONENT_GRID)
    return table and (table.cell_of_selected_row(0) or "").strip()


def exploded_figure(tour):
    """The part's exploded figure, a number at the end of each line."""
    tour.click(*TO_FIGURE)
    wait("the numbers", lambda: number(tour))
    tour.move(*BESIDE_FIGURE)


def number_under_the_mouse(tour):
    """A number under the mouse: its component below, the other numbers of its kits in blue."""
    node = number(tour)
    _, component = item_and_component(node)
    tour.move_on(node)
    wait("its component", lambda: tour.find("label", component))


def list_at_the_item(tour):
    """A click on the number: the list, its cursor on the item."""
    item, _ = item_and_component(number(tour))
    tour.click_on(number(tour))
    wait("the list at the item", lambda: item_in_list(tour) == item)


def blinking_number(tour):
    """The figure from the list: the item's numbers blink in red, those of its kit in blue."""
    tour.click(*TO_FIGURE)
    wait("the numbers", lambda: number(tour))
    tour.move(*BESIDE_FIGURE)
    before = tour.look_of(number(tour))
    wait("the number in another colour", lambda: tour.look_of(number(tour)) != before)


def list_beside_the_figure(tour):
    """The list by the figure's button, its cursor where it was."""
    item, _ = item_and_component(number(tour))
    tour.click(*FROM_FIGURE_TO_LIST)
    wait("the list as it was left", lambda: item_in_list(tour) == item)


def part_behind_both(tour):
    """By way of the figure back to the part; list and figure are closed."""
    tour.click(*TO_FIGURE)
    wait("the numbers", lambda: number(tour))
    tour.click(*TO_PART_RESULT)
    first_rows(tour, FOUND_PARTS_GRID, lambda t: "relé" in t.cell(0, 1), "the part again")


def figure_by_double_click(tour):
    """The figure by a double click on the part; nothing blinks."""
    tour.click(*FIRST_FOUND_PART, times=2)
    wait("the numbers", lambda: number(tour))
    tour.move(*BESIDE_FIGURE)


def back_to_the_search(tour):
    """From the figure back to the search, with its rows as they were."""
    tour.click(*TO_SEARCH)
    first_rows(tour, PARTS_GRID, lambda t: t.cell(0, 3) == "Peça", "the rows that were left")


def vehicles(tour):
    """The panel of vehicles with the beginning of a name."""
    tour.click(*BACKGROUND)
    tour.click(*OPEN_VEHICLES)
    tour.await_node("text", VEHICLE_BOX)
    tour.type("norral")
    first_rows(tour, VEHICLE_GRID, lambda t: t.cell(0, 0).upper().startswith("NORRAL"),
               "vehicles whose name begins with the typed text")


def gallery(tour):
    """The panel of pictures."""
    tour.click(*BACKGROUND)
    tour.click(*OPEN_GALLERY)
    wait("the gallery", lambda: tour.find(name=GALLERY))
    wait("its pictures", lambda: all(shows_picture(tour, place) for place in THUMBNAILS))


def gallery_by_keys(tour):
    """Arrow keys lead through the pictures and move the strip on."""
    wait("the first caption", lambda: tour.find(name=FIRST_CAPTION))
    tour.press("Right", 9)
    wait("other captions", lambda: not tour.find(name=FIRST_CAPTION))
    wait("other pictures", lambda: all(shows_picture(tour, place) for place in THUMBNAILS))


def parts_of_a_picture(tour):
    """A picture opened by a double click: the parts that look like it."""
    left, top, width, height = THUMBNAILS[1]
    tour.click(left + width // 2, top + height // 2, times=2)
    first_rows(tour, FOUND_PARTS_GRID, lambda t: t.rows() > 1, "the parts of the picture")
    wait("the photo of the first", lambda: shows_picture(tour, PHOTO))


def back_to_the_gallery(tour):
    """Back to the gallery, leafed as it was left."""
    tour.click(*TO_SEARCH)
    wait("the gallery", lambda: tour.find(name=GALLERY) and not tour.find(name=FIRST_CAPTION))
    wait("its pictures", lambda: all(shows_picture(tour, place) for place in THUMBNAILS))


def open_settings(tour, check, user):
    """Opens the dialog and waits until it shows this check and this user."""
    tour.click(*SETTINGS)
    row, box = tour.await_node("check box", CHECK_ROW), tour.await_node("text", PROXY_USER)
    wait(f"the settings with {check!r} and {user!r}", lambda: (row.ticked, box.text) == (check, user))


def fill_settings(tour, user, password):
    tour.click_on(tour.await_node("check box", CHECK_ROW))
    for role, box, text in (("text", PROXY_USER, user), ("password text", PROXY_PASSWORD, password)):
        tour.click_on(tour.await_node(role, box))
        tour.press("ctrl+a")
        tour.type(text)


def close_settings(tour, button):
    tour.click_on(tour.await_node("push button", button))
    wait("the settings closed", lambda: not tour.find("check box", CHECK_ROW))


def settings(tour):
    """The settings as they are at first: the automatic check, no proxy."""
    tour.click(*BACKGROUND)
    open_settings(tour, True, "")


def settings_cancelled(tour):
    """Changed and cancelled: the next time they are as before."""
    fill_settings(tour, "outro", "outra")
    close_settings(tour, "Cancelar")
    open_settings(tour, True, "")


def settings_changed(tour):
    """Changed and confirmed; opened again, they are the new ones."""
    fill_settings(tour, "oficina", "chave inglesa")
    close_settings(tour, "OK")
    open_settings(tour, False, "oficina")


def settings_after_restart(tour):
    """The program left and started again: still the new ones."""
    close_settings(tour, "Cancelar")
    tour.click(*LEAVE)
    wait("the program's end", tour.ended)
    tour.start()
    wait("the splash", tour.windows)
    tour.click(*BACKGROUND)
    tour.await_node("push button", EXIT)
    open_settings(tour, False, "oficina")


def settings_left_by_key(tour):
    """Escape leaves them."""
    tour.press("Escape")
    wait("the settings closed", lambda: not tour.find("check box", CHECK_ROW))


def tour_page(number):
    """A page of the maker's tour: the first by its button, the others by leafing on."""
    def station(tour):
        if number == 1:
            tour.click(*BACKGROUND)
            tour.click(*TOUR)
        else:
            tour.click_on(tour.await_node("push button", "Avançar"))
        wait(f"page {number}", lambda: tour.find(name=f"Página {number} de {TOUR_PAGES}"))
        for button, missing_on in (("Voltar", 1), ("Avançar", TOUR_PAGES)):
            wait(f'"{button}" as the page has it',
                 lambda: bool(tour.find("push button", button)) == (number != missing_on))
    station.__name__ = f"tour_page_{number}"
    return station


def tour_closed(tour):
    """The tour left by its button; the search screen stands again."""
    tour.click_on(tour.await_node("push button", "Fechar"))
    wait("the tour's end", lambda: not tour.find("push button", "Fechar"))
    tour.await_node("push button", EXIT)


def help_window(tour):
    """The help in its own window."""
    tour.click(*BACKGROUND)
    tour.click(*HELP)
    wait("the help window", lambda: tour.window(HELP_TITLE))


def restored(tour):
    """The help closed, the catalogue minimised and back again."""
    tour.press("alt+F4")
    wait("the help window's end", lambda: not tour.window(HELP_TITLE))
    tour.click(*MINIMISE)
    wait("the catalogue minimised", tour.is_minimised)
    tour.restore()
    wait("the catalogue back again", lambda: not tour.is_minimised())
    tour.await_node("push button", EXIT)


def update_question(tour):
    """A click on the update button; the server has something newer."""
    tour.site.publish()
    tour.click(*CHECK_FOR_UPDATES)
    wait("the question", lambda: tour.box() == UPDATE_QUESTION)


def update_under_way(tour):
    """The four steps of the update, the second one half done."""
    tour.press("alt+s")
    wait("the second step", lambda: tour.find(name="Baixando os arquivos"))


def update_done(tour):
    """The update's end."""
    wait("the update's end", lambda: tour.box() == UPDATE_DONE)


def new_part_found(tour):
    """The program has started anew; the part that the update brought."""
    old = tour.pid
    tour.press("Return")
    tour.wait_for_process(other_than=old)
    wait("the splash", tour.windows)
    tour.click(*BACKGROUND)
    tour.await_node("push button", EXIT)
    tour.click(*OPEN_PARTS)
    tour.await_node("text", NUMBER_BOX)
    part, description = tour.site.new_part()
    tour.type(part.lower())
    first_rows(tour, PARTS_GRID, lambda t: t.cell(0, 1) == description, "the new part")


def figure_of_the_new_part(tour):
    """The figure that came with it."""
    tour.click(*FIRST_FOUND_ROW, times=2)
    tour.await_node("table", FOUND_PARTS_GRID)
    tour.click(*FIRST_FOUND_PART, times=2)
    wait("its numbers", lambda: number(tour, ""))
    tour.move(*BESIDE_FIGURE)


def credits_at_the_end(tour):
    """Left from the search screen; the credits, with the catalogue closed by then."""
    tour.click(*TO_SEARCH)
    tour.await_node("push button", EXIT)
    tour.click(*LEAVE)
    wait("the credits in the place of the search screen",
         lambda: tour.windows() and not tour.find("push button", EXIT))
    if tour.has_open(os.path.join(tour.data, CATALOGUE)):
        raise NotReached("the catalogue is still open during the credits")


STATIONS = [
    splash,
    search_screen,
    parts_by_number,
    description_with_asterisk,
    customers_number,
    part_result,
    component_list,
    seek_by_item,
    kit_filter,
    print_options,
    printer_dialog,
    printed,
    back_to_the_part,
    exploded_figure,
    number_under_the_mouse,
    list_at_the_item,
    blinking_number,
    list_beside_the_figure,
    part_behind_both,
    figure_by_double_click,
    back_to_the_search,
    vehicles,
    gallery,
    gallery_by_keys,
    parts_of_a_picture,
    back_to_the_gallery,
    settings,
    settings_cancelled,
    settings_changed,
    settings_after_restart,
    settings_left_by_key,
    *[tour_page(number) for number in range(1, TOUR_PAGES + 1)],
    tour_closed,
    help_window,
    restored,
    update_question,
    update_under_way,
    update_done,
    new_part_found,
    figure_of_the_new_part,
    credits_at_the_end,
]
